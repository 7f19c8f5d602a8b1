#include "EditedDocument.h"
#include "FileTransaction.h"
#include "JsonRewriter.h"
#include "LanguageCatalog.h"
#include "LanguageDocument.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "TextNodes.h"

#include "LanguageInformation.h"
#include "TextManagerBase.h"

#include <QDir>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTest>

#include <fstream>
#include <functional>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

/** What another program does while files are saved. */
std::function<void()> beforeSync;

/** JSON of a random node, with the keys that are handled in their own ways. */
QByteArray randomNode(QRandomGenerator& random, int depth)
{
    static const QByteArrayList keys = {
        "A",       "b/c",  "",        "childs", "childsX", "\\u00e4", "ä\\n",    "text",
        "comment", "text", "comment", "Ａ",     "𝄞",       "childs",  "\\u0000", "a\\u0000b"};
    static const QByteArrayList values = {"1",    "\"t\"",         "\"\\u00e9\"",
                                          "null", "[{\"A\": []}]", "\"é\""};
    QByteArrayList members;
    QSet<QByteArray> containers;
    for (int member = random.bounded(5); member > 0; --member) {
        const QByteArray value = depth > 0 && random.bounded(3) > 0
                                     ? randomNode(random, depth - 1)
                                     : values.at(random.bounded(values.size()));
        const QByteArray key = keys.at(random.bounded(keys.size()));
        // Qt's parser never frees a container whose key comes again.
        if (containers.contains(key))
            continue;
        if (!value.startsWith('"'))
            containers.insert(key);
        members.append('"' + key + "\":" + value);
    }
    return '{' + members.join(",\r\n") + '}';
}

/** Changes, adds and removes members of an object and of those below it. */
QJsonObject changedAtRandom(QJsonObject object, QRandomGenerator& random)
{
    for (const QString& key : object.keys()) {
        if (object[key].isObject())
            object[key] = changedAtRandom(object[key].toObject(), random);
        const int chance = random.bounded(12);
        if (chance == 0)
            object.remove(key);
        else if (chance == 1)
            object[key] = "\n\"é";
        else if (chance == 2)
            object["n" + key] = QJsonObject{{"text", key}, {"childs", object}};
    }
    return object;
}

QStringList urlsOf(const LanguageDocument& document)
{
    QStringList urls;
    for (const LanguageDocument::TextNode& node : document.textNodes())
        urls.append(document.urlOf(node.node));
    urls.sort();
    return urls;
}

QStringList listedBy(QByteArray bytes)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes.replace('\r', "")).object();
    QStringList urls = LanguageInformation().getAvailableUrls(object);
    urls.sort();
    return urls;
}

bool doesLibraryLoad(const QByteArray& bytes)
{
    const LanguageFiles files;
    files.write("de", bytes);
    QJsonObject object;
    return TextManagerBase("", "", "").loadAndParseFromJson(files.file("de"), object);
}

QString shown(const QVector<Finding>& findings)
{
    QStringList lines;
    for (const Finding& finding : findings) {
        const QString place = QString("%1:%2").arg(finding.place.line).arg(finding.place.column);
        lines.append((finding.id + ' ' + place + ' ' + finding.url).trimmed());
    }
    return lines.join(", ");
}

} // namespace

/** In the place of libc's own. */
extern "C" int fsync(int file)
{
    if (beforeSync)
        beforeSync();
    return static_cast<int>(syscall(SYS_fsync, file));
}

class CatalogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsTheUrlsOfTheLibrary()
    {
        QRandomGenerator random(1);
        for (int round = 0; round < 3000; ++round) {
            const QByteArray bytes = "{\"Content\": " + randomNode(random, 5) + "}";
            QCOMPARE(urlsOf(LanguageDocument(bytes)), listedBy(bytes));
        }
        const QByteArray bytes = LanguageFiles::readPath(EXAMPLE_LANGUAGES "de_DE.json");
        const LanguageDocument document(bytes);
        QCOMPARE(urlsOf(document), listedBy(bytes));
        QCOMPARE(shown(document.findFaults()), QString());
        bool ok = false;
        for (const LanguageDocument::TextNode& node : document.textNodes())
            QCOMPARE(document.textOf(node),
                     LanguageInformation().getObject(document.urlOf(node.node), ok,
                                                     parseObject(bytes), "Content", "text"));
    }

    void tellsWhatTheLibraryLoads()
    {
        QRandomGenerator random(2);
        for (const int depth : {1023, 1024}) {
            const QByteArray bytes =
                "{\"Content\":" + QByteArray(depth, '[') + QByteArray(depth, ']') + "}";
            QCOMPARE(LanguageDocument(bytes).isLoaded(), doesLibraryLoad(bytes));
            QCOMPARE(LanguageDocument(bytes).tree().isSound(), depth == 1023);
        }
        const QByteArray inserted("\"{}[]:,\\\0\r\n\t\xff\xc3u-1e.", 20);
        for (int round = 0; round < 3000; ++round) {
            QByteArray bytes = "{\"Content\": " + randomNode(random, 0) + "}";
            bytes.insert(random.bounded(bytes.size()),
                         inserted.at(random.bounded(inserted.size())));
            const auto asRead = QJsonDocument::fromJson(QByteArray(bytes).replace('\r', ""));
            const LanguageDocument document(bytes);
            QCOMPARE(document.isLoaded(), asRead.object().contains("Content"));
            QVERIFY2(document.isLoaded() || !document.findFaults().isEmpty(), bytes);
            QVERIFY2(!document.tree().isSound() || !asRead.isNull(), bytes);
        }
    }

    void faults_data()
    {
        addTable(R"(
        bytes                                                    | faults                        | loaded
        {"Content": {"M": {"text": "a" "comment"}}}              | malformed-json 1:32           | no
        {"Content": {"M": {"text": "ä", "comment": "a→b"}}}      | malformed-json 1:46           | yes
        {"Content": {"M": "\q"}}                                 | malformed-json 1:20           | yes
        {"Content": {"M": {"text": "a",}}}                       | malformed-json 1:32           | no
        {"Content": {"M": {"text": "ä?"}}}                       | not-utf8 1:30                 | no
        ~{"Content": {}}                                         | not-utf8 1:1                  | no
        {"Content": {"M": {"n": 1e999}}}                         | malformed-json 1:25           | no
        {"Content": {}} {                                        | malformed-json 1:17           | no
        "Content"                                                | malformed-json 1:1            | no
        [{"Content": {}}]                                        | no-content 1:1                | no
        {"content": {}}                                          | no-content 1:1                | no
        {"Content": []}                                          | wrong-type 1:13               | yes
        {"Content": {"M": "", "N": {"text": 1, "x": 1}}}         | wrong-type 1:19 M, wrong-type 1:37 N/text | yes
        {"Content": {"M": {"childs": "", "comment": null}}}      | wrong-type 1:30 M, wrong-type 1:45 M/comment | yes
        {"Content": {"M": {"childs": {"text": 1, "childs": {}}}}} | wrong-type 1:39 M/text       | yes
        {"Content": {"M": {}}, "Header": {"language": {}}}       | wrong-type 1:47               | yes
        {"Content": {"M": {"text": "", "te\u0078t": ""}}}        | repeated-key 1:32 M/text      | yes
        )");
    }
    void faults()
    {
        const QByteArray bytes = cell("bytes").toUtf8().replace('?', '\xff').replace('~', '\x90');
        for (const QByteArray mark : {"", "\xEF\xBB\xBF"}) {
            const LanguageDocument document(mark + bytes);
            QCOMPARE(shown(document.findFaults()), cell("faults"));
            QCOMPARE(document.isLoaded(), cell("loaded") == "yes");
            QCOMPARE(doesLibraryLoad(mark + bytes), cell("loaded") == "yes");
        }
    }

    void opensAFolder()
    {
        const LanguageFiles files;
        files.write("de", R"({"Content": {}})");
        files.write("de.backup", R"({"Content": {}})");
        files.write("short/de", R"({"Content": {}, "Content": {}})");
        QFile::link("nowhere", files.file("fr"));
        QDir().mkdir(files.file("it"));
        std::ofstream(files.path().toStdString() + "\xff.json") << "{}";
        QCOMPARE(mkfifo(qPrintable(files.file("en")), 0600), 0);

        const LanguageCatalog catalog(files.path(), "short");
        QCOMPARE(catalog.find("de")->file, "de.json");
        QCOMPARE(catalog.find("de", true)->file, "short/de.json");
        QStringList found;
        for (const Finding& fault : catalog.findFaults())
            found.append(fault.id + ' ' + fault.file);
        const QString noUtf8 = QChar(QChar::ReplacementCharacter);
        QCOMPARE(found.join(", "), "same-language-key de.backup.json, unreadable-file it.json, "
                                   "unreadable-file en.json, unreadable-file fr.json, "
                                   "unreadable-file " +
                                       noUtf8 + ".json, repeated-key short/de.json");
        // Qt's temporary folder does not see them when it is removed.
        for (const char* name : {"\xff.json", "en.json", "fr.json"})
            QCOMPARE(unlink((files.path().toStdString() + name).c_str()), 0);
    }

    void editsLeaveOtherBytes()
    {
        QRandomGenerator random(3);
        int editedDocuments = 0;
        for (int round = 0; round < 2000; ++round) {
            const QByteArray bytes =
                "\xEF\xBB\xBF {\"n\": 1.00,\"Content\" : " + randomNode(random, 4) + "}\n";
            EditedDocument edited(bytes);
            QCOMPARE(edited.fault().has_value(), !JsonTree(bytes).repeatedKeys().empty());
            if (edited.fault())
                continue;
            ++editedDocuments;
            QCOMPARE(*edited.bytes(), bytes);
            const JsonTree tree(bytes);
            const int node = random.bounded(tree.size());
            QStringList path;
            for (int above = node; above != tree.root; above = tree.at(above).parent)
                path.prepend(tree.keyOf(above));
            if (tree.isString(node) && !path.contains("") && !path.contains("b/c")) {
                QCOMPARE(writeString(path, "new", edited.document()), QString());
                QCOMPARE(*edited.bytes(), bytes.left(tree.at(node).valueBegin) + "\"new\"" +
                                              bytes.mid(tree.at(node).valueEnd));
            }
            edited.document() = changedAtRandom(edited.document(), random);
            QVERIFY2(edited.bytes(), bytes); // read again, it is the same document
        }
        QVERIFY(editedDocuments > 500);
    }

    void followsTheLayout_data()
    {
        addTable(R"(
        before                                        | path  | after
        {"C": {"a": 1,  "c": 2}}                      | C/b   | {"C": {"a": 1,  "b": "t",  "c": 2}}
        {"C": {"b": 1, "a": 2}}                       | C/0   | {"C": {"b": 1, "a": 2, "0": "t"}}
        {"C":{"a":1}}                                 | C/0   | {"C":{"0":"t","a":1}}
        {\n→"C": {}\n}                              | C/a   | {\n→"C": {\n→→"a": "t"\n→}\n}
        {\r\n  "C": {\r\n    "a": 1\r\n  }\r\n}      | C/b   | {\r\n  "C": {\r\n    "a": 1,\r\n    "b": "t"\r\n  }\r\n}
        {\n "C": {\n  "a": { "x": 1, "b": 2 }\n }\n} | C/b/x
        .. | {\n "C": {\n  "a": { "x": 1, "b": 2 },\n  "b": { "x": "t" }\n }\n}
        {\n "C": {\n  "a": {\n   "x": 1 }\n }\n}     | C/b/c
        .. | {\n "C": {\n  "a": {\n   "x": 1 },\n  "b": {\n   "c": "t" }\n }\n}
        )");
    }
    void followsTheLayout()
    {
        const QByteArray bytes = cell("before").toUtf8();
        const JsonTree tree(bytes);
        const QJsonObject asRead = QJsonDocument::fromJson(bytes).object();
        QJsonObject wanted = asRead;
        QCOMPARE(writeString(cell("path").split('/'), "t", wanted), QString());
        QCOMPARE(JsonRewriter(tree).rewrite(asRead, wanted), cell("after").toUtf8());
    }

    void savesAllFilesOrNone()
    {
        const LanguageFiles files;
        for (const QString name : {"a", "b"})
            files.write(name, "old");
        const QString a = files.file("a");
        const QString left = files.path() + ".a.json.abcdef.new";
        const QString foreign = files.path() + ".a.json.abcde.new";
        LanguageFiles::writePath(left, "of one that was killed");
        LanguageFiles::writePath(foreign, "");
        QCOMPARE(setxattr(qPrintable(a), "user.origin", "x", 1, 0), 0);

        for (const QString disturbed : {"b", "new", ""}) { // meanwhile, by another program
            FileTransaction transaction;
            const QStringList paths = {files.file("b"), files.file("new"), a};
            QCOMPARE(transaction.lock(paths), QString());
            for (const QString& path : paths)
                transaction.write(path, "new");
            beforeSync = [&] {
                if (!disturbed.isEmpty())
                    files.write(disturbed, "others");
            };
            const QString fault = transaction.save();
            beforeSync = nullptr;
            QCOMPARE(fault.contains("another program has changed it"), !disturbed.isEmpty());
            QCOMPARE(files.read("a"), disturbed.isEmpty() ? "new" : "old");
            QCOMPARE(files.read(disturbed), disturbed.isEmpty() ? "" : "others");
        }
        char origin = 0;
        QCOMPARE(getxattr(qPrintable(a), "user.origin", &origin, 1), 1);
        QVERIFY(!QFile::exists(left) && QFile::exists(foreign));

        QCOMPARE(link(qPrintable(a), qPrintable(files.file("c"))), 0);
        QVERIFY(FileTransaction().lock({a}).contains("has another name"));
        const QString lock = files.path() + ".b.json.lock";
        QCOMPARE(mkfifo(qPrintable(lock), 0600), 0);
        QVERIFY(FileTransaction().lock({files.file("b")}).contains("is no regular file. Remove"));
        QFile::remove(lock);
    }
};

QTEST_GUILESS_MAIN(CatalogTest)
#include "tst_catalog.moc"
