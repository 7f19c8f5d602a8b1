#include "LanguageFiles.h"
#include "Resources.h"
#include "Table.h"
#include "ToolRun.h"
#include "WarningCapture.h"

#include "JsonDataIterator.h"
#include "JsonDataIteratorTextIdTranslator.h"
#include "LanguageInformation.h"
#include "TextManagerBase.h"
#include "TextManagerReferenceParameters.h"
#include "TranslateableTextHelper.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QTest>

#include <functional>
#include <optional>

#include <sys/resource.h>

// How time grows with what is given. With TEXTMANAGER_LONG_ATTACK, the name of a file, the large
// sizes are measured, and what each took is written there. scripts/attack does that.

namespace
{

/** What this thread, and the programs that it has run, have worked so far. */
double workedSeconds()
{
    double seconds = 0;
    for (const auto who : {RUSAGE_THREAD, RUSAGE_CHILDREN}) {
        rusage usage{};
        getrusage(who, &usage);
        for (const timeval& time : {usage.ru_utime, usage.ru_stime})
            seconds += double(time.tv_sec) + double(time.tv_usec) / 1e6;
    }
    return seconds;
}

using Key = QByteArray (*)(int);

QByteArray keyAt(int index)
{
    return "Key" + QByteArray::number(index);
}

/**
 * Keys that Qt's hash of a QString cannot tell apart, whatever its seed. It is linear: that "BB"
 * stands in a place instead of "Aa" changes it by the same bits each time. So there are sets of
 * places whose changes cancel each other out, found here by elimination.
 */
QByteArray collidingKeyAt(int index)
{
    constexpr int places = 52;
    const auto keyOf = [](quint64 changes) {
        QByteArray key;
        for (int place = 0; place < places; ++place)
            key += (changes >> place & 1) != 0 ? "BB" : "Aa";
        return key;
    };
    static const QVector<quint64> cancelling = [&] {
        QVector<quint64> found;
        QVector<QPair<uint, quint64>> rows;
        for (int place = 0; place < places; ++place) {
            quint64 changes = quint64(1) << place;
            auto hash =
                static_cast<uint>(qHash(QString(keyOf(changes)), 1) ^ qHash(QString(keyOf(0)), 1));
            for (const auto& [rowHash, rowChanges] : qAsConst(rows)) {
                if ((hash ^ rowHash) < hash) {
                    hash ^= rowHash;
                    changes ^= rowChanges;
                }
            }
            if (hash == 0)
                found.append(changes);
            else
                rows.append({hash, changes});
        }
        return found;
    }();
    quint64 changes = 0;
    for (int bit = 0; bit < cancelling.size(); ++bit)
        changes ^= (index >> bit & 1) != 0 ? cancelling.at(bit) : 0;
    return keyOf(changes);
}

/** A language file whose node M has as many children. */
QByteArray wideFile(int count, Key key)
{
    const QByteArray node = R"('%1': {'text': 'Text %2', 'comment': 'c'},)";
    QByteArray bytes =
        R"({"Header": {"language": "en_US", "subLanguage": ""}, "Content": {"M": {"childs": {)";
    for (int index = 0; index < count; ++index)
        bytes +=
            QByteArray(node).replace("%1", key(index)).replace("%2", QByteArray::number(index));
    bytes.replace('\'', '"').chop(1);
    return bytes + "}}}}";
}

/** What is done with something of a size, in a function that is measured; the rest is not. */
using Work = std::function<void()>;

Work lookUps(const LanguageFiles& files, int size, Key key)
{
    files.write("en_US", wideFile(size, key));
    QStringList urls;
    for (int index = 0; index < size; ++index)
        urls.append("M/" + key(index));
    return [path = files.path(), urls] {
        const TextManagerBase manager(path, "de_DE", QString());
        QCOMPARE(manager.getAvailableUrls("en_US").size(), urls.size());
        for (const QString& url : urls + urls)
            QVERIFY(!manager.getText(url, QString()).isEmpty());
    };
}

Work longKey(const LanguageFiles& files, int size, Key)
{
    const QByteArray key(size, 'k');
    files.write("en_US", wideFile(1, keyAt).replace(keyAt(0), key));
    return [path = files.path(), url = "M/" + QString(key)] {
        const TextManagerBase manager(path, "en_US", QString());
        QCOMPARE(manager.getAvailableUrls("en_US"), QStringList(url));
        QCOMPARE(manager.getText(url, QString()), "Text 0");
    };
}

Work separatorsRead(const LanguageFiles& files, int size, Key)
{
    files.write("en_US", wideFile(1, keyAt));
    return [path = files.path(), size] {
        const TextManagerBase manager(path, "en_US", QString());
        for (const QString keys : {"/", "M/", "childs/"})
            QCOMPARE(manager.getText("M/" + keys.repeated(size), QString()), QString());
    };
}

Work separatorsWritten(const LanguageFiles&, int size, Key)
{
    return [path = QString("a/").repeated(size) + "text"] {
        QJsonObject document;
        LanguageInformation information;
        QVERIFY(information.setJsonValue(path, "t", document) == TextManagerDefinitions::Success);
        QJsonValue value;
        QVERIFY(information.readJsonValue(path, document, value));
        QCOMPARE(information.getAvailableUrls(document), QStringList());
    };
}

Work translation(const LanguageFiles&, int size, Key)
{
    QJsonArray items;
    for (int index = 0; index < size; ++index)
        items.append(QJsonObject{{"labelTextId", "M/" + QString(keyAt(index))}});
    return [items] {
        QJsonObject document{{"Content", QJsonObject{{"M", QJsonObject()}}}};
        const TextManagerBase manager("en_US", document);
        const TextManagerReferenceParameters parameters(manager, "en_US");
        JsonDataIteratorTextIdTranslator translator(parameters);
        translator.setConfiguration(JsonDataIteratorTextIdTranslator::SystemInformationData);
        QJsonValue data = items;
        JsonDataIterator::iterate(data, translator);
        QVERIFY(data.toArray().last().toObject().contains("labelTextShort"));
    };
}

Work manyFiles(const LanguageFiles& files, int size, Key key)
{
    for (int index = 0; index < size; ++index)
        files.write(key(index), wideFile(3, keyAt));
    return [path = files.path(), size] {
        TextManagerBase manager(path, "en_US", QString());
        manager.reloadLanguage();
        const QStringList languages = manager.getAvailableLanguages();
        QCOMPARE(languages.size(), size);
        for (const QString& language : languages)
            QCOMPARE(manager.getText("M/Key1", language), "Text 1");
    };
}

/** A command, and in its folder all that it may want. */
Work command(const LanguageFiles& files, int size, Key key)
{
    files.write("en_US", wideFile(size, key));
    files.write("de_DE", wideFile(size, key));
    QByteArray batch;
    QByteArray table = "URL\ten_US\tde_DE\n";
    QByteArray source;
    for (int index = 0; index < size; ++index) {
        const QByteArray number = QByteArray::number(index);
        batch += "M/New" + key(index) + "\tnew\n";
        table += "M/" + key(index) + "\tText " + number + "\tneu " + number + "\n";
        source += "getText(\"M/Unknown" + key(index) + "\");\n";
    }
    files.writeFile("new.batch", batch);
    files.writeFile("de_DE.tsv", table);
    files.writeFile("uses.cpp", source);
    return [words = files.words(cell("what"))] {
        const ToolRun run(words);
        QVERIFY2(run.exitStatus() == 0 || run.exitStatus() == 1, qPrintable(run.messages()));
    };
}

/** The seconds that it takes to do what the row says, with that many of it. */
double measured(int size)
{
    static const QMap<QString, Work (*)(const LanguageFiles&, int, Key)> works{
        {"children looked up", lookUps},     {"characters of a key", longKey},
        {"separators read", separatorsRead}, {"separators written", separatorsWritten},
        {"objects translated", translation}, {"files loaded", manyFiles},
    };
    const LanguageFiles files;
    const Key key = cell("keys") == "colliding" ? collidingKeyAt : keyAt;
    const Work work = works.value(cell("what"), command)(files, size, key);
    std::optional<WarningCapture> warnings; // of the library; the test's own are to be seen
    if (works.contains(cell("what")))
        warnings.emplace();
    double seconds = 0;
    // Qt frees a document by recursion: one of a million levels takes a large stack.
    constexpr uint kilobytes = 256 * 1024;
    runOnSmallStack(
        [&] {
            const double before = workedSeconds();
            work();
            seconds = workedSeconds() - before;
        },
        kilobytes);
    return seconds;
}

} // namespace

class ReliabilitySizesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTimeInProportion_data()
    {
        addTable(R"(
        what                                             | keys      | small | large
        children looked up                               | plain     | 2000  | 2000000
        children looked up                               | colliding | 2000  | 100000
        characters of a key                              | plain     | 10000 | 4000000
        separators read                                  | plain     | 10000 | 1000000
        separators written                               | plain     | 1000  | 1000000
        objects translated                               | plain     | 1000  | 100000
        files loaded                                     | plain     | 100   | 10000
        files loaded                                     | colliding | 100   | 10000
        check DIR                                        | plain     | 1000  | 100000
        check DIR                                        | colliding | 1000  | 100000
        set DIR de_DE --batch DIR/new.batch              | plain     | 1000  | 100000
        set DIR de_DE --batch DIR/new.batch              | colliding | 1000  | 100000
        set DIR de_DE --batch DIR/new.batch --must-exist | plain     | 1000  | 100000
        import DIR DIR/de_DE.tsv                         | colliding | 1000  | 100000
        export DIR --language de_DE -o DIR/new.tsv       | colliding | 1000  | 100000
        usage DIR DIR/uses.cpp --unused                  | plain     | 1000  | 100000
        usage DIR DIR/uses.cpp --unused                  | colliding | 1000  | 100000
        keys DIR --header DIR/keys.h                     | colliding | 1000  | 100000
        pack DIR -o DIR/packed                           | colliding | 1000  | 100000
        )");
    }
    void takesTimeInProportion()
    {
        QFile table(qEnvironmentVariable("TEXTMANAGER_LONG_ATTACK"));
        const bool isLarge = !table.fileName().isEmpty();
        QVERIFY(!isLarge || table.open(QIODevice::Append));
        const int smallest = isLarge ? cell("large").toInt() / 16 : cell("small").toInt();
        double before = 0;
        for (int factor = 1; factor <= (isLarge ? 16 : 4); factor *= 4) {
            const double seconds = measured(factor * smallest);
            const QString line = QString("%1;%2;%3;%4\n").arg(cell("what"), cell("keys"));
            if (isLarge)
                table.write(line.arg(factor * smallest).arg(seconds).toUtf8());
            // Four times as much may take eight times as long and no more: with a square it is
            // sixteen.
            constexpr double start = 0.1; // of a program, under a sanitizer
            QVERIFY2(factor == 1 || seconds < start + 8 * before,
                     qPrintable(QString("%1 s, and %2 s for a fourth").arg(seconds).arg(before)));
            before = seconds;
            qInfo("1 sizes");
        }
    }

    void takesLittleStack_data()
    {
        addTable(R"(
        what               | levels | kilobytes
        documents          | 900    | 256
        documents          | 1020   | 288
        edits              | 4000   | 256
        translateable text | 900    | 256
        )");
    }
    void takesLittleStack()
    {
        const WarningCapture warnings;
        const int levels = cell("levels").toInt();
        const auto nested = [&](const QByteArray& innermost) {
            return QByteArray("{\"a\":").repeated(levels) + innermost + QByteArray(levels, '}');
        };
        const LanguageFiles files;
        files.write("en_US", "{\"Content\":" + nested(R"({"text": "t", "comment": "c"})") + "}");
        const QString url = QString("a/").repeated(levels).chopped(1);
        const QMap<QString, Work> works{
            {"documents",
             [&] {
                 const TextManagerBase manager(files.path(), "en_US", QString());
                 QCOMPARE(manager.getAvailableUrls("en_US"), QStringList(url));
                 QCOMPARE(manager.getText(url, QString()), "t");
             }},
            {"edits", separatorsWritten(files, levels, keyAt)},
            {"translateable text",
             [&] {
                 TranslateableTextHelper helper("en_US", nullptr);
                 QVERIFY(helper.setTranslateableTextObject("{\"POSIX\":" + QString(nested("{}")) +
                                                           "}"));
                 QCOMPARE(helper.getText("en_US"), QString());
             }},
        };
        constexpr bool isQt5 = QT_VERSION < QT_VERSION_CHECK(6, 0, 0); // Qt 6 itself takes more
        runOnSmallStack(works.value(cell("what")), cell("kilobytes").toUInt() + (isQt5 ? 0 : 48));
    }
};

QTEST_GUILESS_MAIN(ReliabilitySizesTest)
#include "tst_reliability_sizes.moc"
