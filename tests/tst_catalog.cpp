#include "EditedDocument.h"
#include "FileTransaction.h"
#include "JsonRewriter.h"
#include "LanguageCatalog.h"
#include "LanguageDocument.h"
#include "LanguageFiles.h"
#include "RegularFile.h"
#include "Table.h"
#include "TextNodes.h"

#include "LanguageInformation.h"
#include "TextManagerBase.h"

#include <QDir>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTest>

#include <fstream>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

/** JSON of a random node, with the keys that are handled in their own ways. */
QByteArray randomNode(QRandomGenerator& random, int depth)
{
    static const QByteArrayList keys = {"A",       "b/c",  "",     "childs",  "childsX",
                                        "\\u00e4", "ä\\n", "text", "comment", "text",
                                        "comment", "Ａ",   "𝄞",    "childs"};
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
    for (const Finding& finding : findings)
        lines.append(QString("%1 %2:%3 %4")
                         .arg(finding.id)
                         .arg(finding.place.line)
                         .arg(finding.place.column)
                         .arg(finding.url)
                         .trimmed());
    return lines.join(", ");
}

} // namespace

class CatalogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsTheUrlsOfTheLibrary();
    void tellsWhatTheLibraryLoads();
    void faults_data();
    void faults();
    void tellsPlaces();
    void opensAFolder();
    void editsLeaveOtherBytes();
    void followsTheLayout_data();
    void followsTheLayout();
    void savesAllFilesOrNone();
};

void CatalogTest::listsTheUrlsOfTheLibrary()
{
    QRandomGenerator random(1);
    for (int round = 0; round < 3000; ++round) {
        const QByteArray bytes = "{\"Content\": " + randomNode(random, 5) + "}";
        QCOMPARE(urlsOf(LanguageDocument(bytes)), listedBy(bytes));
    }
    const QDir examples(EXAMPLE_LANGUAGES);
    const QStringList names = examples.entryList({"*.json"});
    QVERIFY(!names.isEmpty());
    for (const QString& name : names) {
        QFile file(examples.filePath(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const LanguageDocument document(bytes);
        QCOMPARE(urlsOf(document), listedBy(bytes));
        QCOMPARE(shown(document.findFaults()), QString());
        const QJsonObject object = QJsonDocument::fromJson(bytes).object();
        bool ok = false;
        for (const LanguageDocument::TextNode& node : document.textNodes())
            QCOMPARE(document.textOf(node),
                     LanguageInformation().getObject(document.urlOf(node.node), ok, object,
                                                     "Content", "text"));
    }
}

void CatalogTest::tellsWhatTheLibraryLoads()
{
    QRandomGenerator random(2);
    for (const int depth : {1023, 1024}) {
        const QByteArray bytes =
            "{\"Content\":" + QByteArray(depth, '[') + QByteArray(depth, ']') + "}";
        QCOMPARE(LanguageDocument(bytes).isLoaded(), !QJsonDocument::fromJson(bytes).isNull());
        QCOMPARE(LanguageDocument(bytes).tree().isSound(), depth == 1023);
    }
    const QByteArray inserted("\"{}[]:,\\\0\r\n\t\xff\xc3u-1e.", 20);
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = "{\"Content\": " + randomNode(random, 0) + "}";
        bytes.insert(random.bounded(bytes.size()), inserted.at(random.bounded(inserted.size())));
        QJsonParseError error;
        const auto object = QJsonDocument::fromJson(QByteArray(bytes).replace('\r', ""), &error);
        const LanguageDocument document(bytes);
        QCOMPARE(document.isLoaded(), object.object().contains("Content"));
        QVERIFY2(document.isLoaded() || !document.findFaults().isEmpty(), bytes);
        QVERIFY2(!document.tree().isSound() || error.error == QJsonParseError::NoError, bytes);
    }
}

void CatalogTest::faults_data()
{
    addTable(R"(
        bytes                                                    | faults                        | loaded
        {"Content": {"M": {"text": "a" "comment"}}}              | malformed-json 1:32           | no
        {"Content": {"M": {"text": "ä", "comment": "a#b"}}}      | malformed-json 1:46           | yes
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

void CatalogTest::faults()
{
    const QByteArray bytes =
        cell("bytes").toUtf8().replace('#', '\t').replace('?', '\xff').replace('~', '\x90');
    for (const QByteArray mark : {"", "\xEF\xBB\xBF"}) {
        const LanguageDocument document(mark + bytes);
        QCOMPARE(shown(document.findFaults()), cell("faults"));
        QCOMPARE(document.isLoaded(), cell("loaded") == "yes");
        QCOMPARE(doesLibraryLoad(mark + bytes), cell("loaded") == "yes");
    }
}

void CatalogTest::tellsPlaces()
{
    const QByteArray line = "{\"é𝄞\": \"" + QByteArray(5000, 'x') + "\", \"M\":";
    for (const QByteArray lineEnd : {"\n", "\r\n", "\r"}) {
        const JsonTree tree("{\"Content\":" + lineEnd + line + lineEnd + " {\"text\": \"é\"}}}");
        const int node = tree.child(tree.child(tree.root, QString("Content")), QString("M"));
        QCOMPARE(tree.keyPlace(node).line, 2);
        QCOMPARE(tree.keyPlace(node).column, 5012);
        QCOMPARE(tree.valuePlace(node).line, 3);
        QCOMPARE(tree.valuePlace(node).column, 2);
        QCOMPARE(tree.valueBytes(node), "{\"text\": \"é\"}");
    }
}

void CatalogTest::opensAFolder()
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
    QCOMPARE(found,
             QStringList({"same-language-key de.backup.json", "unreadable-file it.json",
                          "unreadable-file en.json", "unreadable-file fr.json",
                          "unreadable-file " + noUtf8 + ".json", "repeated-key short/de.json"}));
    // Qt's temporary folder does not see them when it is removed.
    for (const char* name : {"\xff.json", "en.json", "fr.json"})
        QCOMPARE(unlink((files.path().toStdString() + name).c_str()), 0);
}

void CatalogTest::editsLeaveOtherBytes()
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
        QVector<int> strings;
        for (int node = 0; node < tree.size(); ++node) {
            if (tree.isString(node) && tree.at(node).keyBegin < tree.at(node).keyEnd)
                strings.append(node);
        }
        if (!strings.isEmpty()) { // one text: what is before it and behind it stays
            const int node = strings.at(random.bounded(strings.size()));
            QStringList path;
            for (int above = node; above != tree.root; above = tree.at(above).parent)
                path.prepend(tree.keyOf(above));
            if (!path.join("").contains('/')) {
                QCOMPARE(writeString(path, "new", edited.document()), QString());
                QCOMPARE(*edited.bytes(), bytes.left(tree.at(node).valueBegin) + "\"new\"" +
                                              bytes.mid(tree.at(node).valueEnd));
            }
        }
        edited.document() = changedAtRandom(edited.document(), random);
        QVERIFY2(edited.bytes(), bytes); // read again, it is the same document
    }
    QVERIFY(editedDocuments > 500);
}

void CatalogTest::followsTheLayout_data()
{
    addTable(R"(
        before                                        | path  | after
        {"C": {"a": 1,  "c": 2}}                      | C/b   | {"C": {"a": 1,  "b": "t",  "c": 2}}
        {"C": {"b": 1, "a": 2}}                       | C/0   | {"C": {"b": 1, "a": 2, "0": "t"}}
        {"C":{"a":1}}                                 | C/0   | {"C":{"0":"t","a":1}}
        {\n#"C": {}\n}                              | C/a   | {\n#"C": {\n##"a": "t"\n#}\n}
        {\r\n  "C": {\r\n    "a": 1\r\n  }\r\n}      | C/b   | {\r\n  "C": {\r\n    "a": 1,\r\n    "b": "t"\r\n  }\r\n}
        {\n "C": {\n  "a": { "x": 1, "b": 2 }\n }\n} | C/b/x
        .. | {\n "C": {\n  "a": { "x": 1, "b": 2 },\n  "b": { "x": "t" }\n }\n}
        {\n "C": {\n  "a": {\n   "x": 1 }\n }\n}     | C/b/c
        .. | {\n "C": {\n  "a": {\n   "x": 1 },\n  "b": {\n   "c": "t" }\n }\n}
    )");
}

void CatalogTest::followsTheLayout()
{
    const QByteArray bytes = cell("before").toUtf8().replace('#', '\t');
    const JsonTree tree(bytes);
    const QJsonObject asRead = QJsonDocument::fromJson(bytes).object();
    QJsonObject wanted = asRead;
    QCOMPARE(writeString(cell("path").split('/'), "t", wanted), QString());
    QCOMPARE(JsonRewriter(tree).rewrite(asRead, wanted), cell("after").toUtf8().replace('#', '\t'));
}

void CatalogTest::savesAllFilesOrNone()
{
    const LanguageFiles files;
    for (const QString name : {"a", "b"})
        files.write(name, "old");
    const QString left = files.path() + ".a.json.abcdef.new";
    const QString foreign = files.path() + ".a.json.abcde.new";
    LanguageFiles::writePath(left, "of one that was killed");
    LanguageFiles::writePath(foreign, "");
    QCOMPARE(setxattr(qPrintable(files.file("a")), "user.origin", "x", 1, 0), 0);

    for (const bool isDisturbed : {true, false}) {
        FileTransaction transaction;
        QCOMPARE(transaction.lock({files.file("b"), files.file("a")}), QString());
        transaction.write(files.file("a"), "new");
        transaction.write(files.file("b"), "new");
        if (isDisturbed)
            files.write("b", "others");
        QCOMPARE(transaction.save().contains("another program has changed it"), isDisturbed);
        QCOMPARE(*readRegularFile(files.file("a")).bytes, isDisturbed ? "old" : "new");
    }
    char origin = 0;
    QCOMPARE(getxattr(qPrintable(files.file("a")), "user.origin", &origin, 1), 1);
    QVERIFY(!QFile::exists(left) && QFile::exists(foreign));

    QCOMPARE(link(qPrintable(files.file("a")), qPrintable(files.file("c"))), 0);
    QVERIFY(FileTransaction().lock({files.file("a")}).contains("has another name"));
    QCOMPARE(mkfifo(qPrintable(files.path() + ".b.json.lock"), 0600), 0);
    QVERIFY(FileTransaction().lock({files.file("b")}).contains("is no regular file. Remove it."));
    QFile::remove(files.path() + ".b.json.lock");
}

QTEST_GUILESS_MAIN(CatalogTest)
#include "tst_catalog.moc"
