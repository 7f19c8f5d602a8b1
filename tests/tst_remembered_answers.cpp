#include "OpenTextManager.h"
#include "Resources.h"

#include <QFile>
#include <QJsonDocument>

#include <random>

namespace
{

/** A text manager that also looks up as if nothing were remembered. */
class PlainTextManager : public OpenTextManager
{
public:
    using OpenTextManager::OpenTextManager;

    QString getTextPlainly(const QString& url, bool& ok, const QString& key) const
    {
        return getTextOrComment(m_LanguageMap, url, ok, key, "Content", "text");
    }
    QString getAnsweringLanguagePlainly(const QString& url, const QString& key) const
    {
        bool ok = false;
        for (const QString& each : {key, QString("en_US"), QString("POSIX")}) {
            if (!getObjectFromMap(m_LanguageMap, url, ok, each, "Content", "text").isEmpty())
                return each;
        }
        return QString();
    }
    QString getShortTextPlainly(const QString& url, bool& ok, const QString& key) const
    {
        const QString text = getObjectFromMap(m_ShortLanguageMap, url, ok, key, "Content", "text");
        bool isFullTextOk = false;
        return text.isEmpty() ? getTextPlainly(url, isFullTextOk, key) : text;
    }
};

const QStringList languages = {"de_DE", "en_US", "POSIX", "de_AT"};
const QString oddKey = QString::fromLatin1("a\0", 2) + QChar(0xd800) + QChar(0xfffe);
const QStringList keys = {"A", oddKey, "", "text"};

} // namespace

class RememberedAnswersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersAsIfNothingWereRemembered()
    {
        const LanguageFiles files;
        PlainTextManager manager(files.path(), "de_DE", "short");
        WarningCapture capture;
        const auto outcome = [&](auto lookUp) {
            capture.take();
            bool ok = false;
            const QString text = lookUp(ok);
            return QStringList{text, ok ? "ok" : "not ok"} + capture.take();
        };

        for (int round = 0; round < 1000 && !QTest::currentTestFailed(); ++round) {
            changeSomething(files, manager);
            if (below(2) == 0)
                manager.reloadAndCompare(files, capture);
            // Lent out before the look-ups, and used after them.
            auto& map = below(2) == 0 ? manager.m_LanguageMap : manager.m_ShortLanguageMap;
            const auto lent = map.find(any(languages));
            for (int count = 0; count < 60; ++count) {
                const QString url =
                    QStringList{any(keys), any(keys), any(keys)}.mid(below(3)).join('/');
                const QString key = any(languages + QStringList(""));
                const QString chosen = manager.selectSuitableLanguageKey(key);
                const QStringList full =
                    outcome([&](bool& ok) { return manager.getTextPlainly(url, ok, chosen); });
                QCOMPARE(outcome([&](bool& ok) { return manager.getText(url, ok, key, false); }),
                         full);
                QCOMPARE(manager.getText(url, key), full.first());
                QCOMPARE(outcome([&](bool& ok) { return manager.getText(url, ok, key, true); }),
                         outcome([&](bool& ok) { return manager.getTextPlainly(url, ok, key); }));
                QCOMPARE(manager.getAnsweringLanguage(url, key),
                         manager.getAnsweringLanguagePlainly(url, chosen));
                QCOMPARE(outcome([&](bool& ok) { return manager.getShortText(url, ok, key); }),
                         outcome([&](bool& ok) {
                             return manager.getShortTextPlainly(url, ok, chosen);
                         }));
            }
            if (lent != map.end()) {
                lent.value()["Content"] = randomNode(0);
                QCOMPARE(map.value(lent.key()), lent.value());
            }
        }
    }

    void takesNoMoreMemoryForMadeUpUrls()
    {
        const QString longText(50'000, 'x');
        QJsonObject document{{"Content", QJsonObject{{"A", QJsonObject{{"text", longText}}}}}};
        const TextManagerBase manager("en_US", document);
        const int before = peakMegabytes();
        bool ok = false;
        for (int count = 0; count < 200'000; ++count) {
            // Some in a large buffer of the caller.
            QString made(count < 190'000 ? 250 : 20'000, 'x');
            made.resize(240);
            made += QString::number(count).rightJustified(10);
            manager.getText(made, ok, "en_US", false);
            if (count < 5'000)
                manager.getText("A", ok, made, false);
            manager.getShortText(made, ok, made);
        }
        // Unbounded in number or length it would be several hundred; a sanitizer multiplies what is
        // kept.
        QVERIFY2(peakMegabytes() - before < 200, qPrintable(QString::number(peakMegabytes())));
    }

    void freesWhatIsReplaced()
    {
        const LanguageFiles files;
        OpenTextManager manager(files.path(), "de_DE", "short");
        const int before = peakMegabytes();
        for (int count = 0; count < 60; ++count) {
            // One language, in a file of another name each time.
            const QString name = QString("de_DE.%1").arg(count);
            const QByteArray text = QByteArray(2'000'000, 'x') + QByteArray::number(count);
            const LanguageFiles others;
            for (const LanguageFiles* each : {&files, &others})
                each->writeText(name, text);
            QMap<QString, QJsonObject> map;
            manager.addLanguage(others.path(), map);
            manager.reloadLanguage();
            QCOMPARE(manager.getText("A", "de_DE").size(), text.size());
            files.remove(name);
        }
        QVERIFY2(peakMegabytes() - before < 60, qPrintable(QString::number(peakMegabytes())));
    }

private:
    int below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(m_Random); }
    QString any(const QStringList& list) { return list.at(below(static_cast<int>(list.size()))); }

    /** A node with texts, empty texts, numbers for texts, and faults in its structure. */
    QJsonValue randomNode(int depth)
    {
        const QJsonValue texts[] = {QString::number(m_Random()), "new", "", 7,
                                    QJsonValue::Undefined};
        QJsonObject node{{"comment", "c"}, {"text", texts[below(5)]}};
        QJsonObject childs;
        for (const QString& key : keys) {
            if (depth < 2 && below(2) == 0)
                childs.insert(key, below(12) == 0 ? "a leaf in the way" : randomNode(depth + 1));
        }
        if (!childs.isEmpty())
            node.insert("childs", childs);
        return depth == 0 ? childs : node;
    }
    QJsonObject randomDocument() { return {{"Content", randomNode(0)}}; }

    /** Changes a file, or a map itself, or nothing. */
    void changeSomething(const LanguageFiles& files, OpenTextManager& manager)
    {
        const QString language = any(languages);
        const QByteArray contents[] = {QJsonDocument(randomDocument()).toJson(), "{\"Content\": {",
                                       "{\"Content\": {\"A\": {\"text\": \"two\r\nlines\"}}}",
                                       "{}"};
        if (below(2) == 0)
            files.write(any({"", "short/"}) + language + any({"", ".old"}), contents[below(4)]);
        if (below(8) == 0)
            QFile::remove(files.file(language));
        if (below(4) == 0)
            manager.m_LanguageMap[language] = randomDocument();
        if (below(4) == 0)
            manager.m_ShortLanguageMap[language] = randomDocument();
        if (below(8) == 0)
            manager.m_LanguageMap.remove(language);
    }

    std::mt19937 m_Random;
};

QTEST_GUILESS_MAIN(RememberedAnswersTest)
#include "tst_remembered_answers.moc"
