#include "LanguageFiles.h"
#include "WarningCapture.h"

#include "TextManagerBase.h"

#include <QFile>
#include <QTest>

#include <random>

namespace
{

/** What a look-up came to, with everything that can be seen of it. */
struct Outcome {
    QString text;
    bool ok = false;
    QStringList warnings;

    bool operator==(const Outcome& other) const
    {
        return text == other.text && ok == other.ok && warnings == other.warnings;
    }
};

/** A text manager that also looks up as if nothing were remembered, and changes its own maps. */
class OpenTextManager : public TextManagerBase
{
public:
    using TextManagerBase::m_LanguageMap;
    using TextManagerBase::m_ShortLanguageMap;
    using TextManagerBase::TextManagerBase;

    QString getTextPlainly(const QString& url, bool& ok, const QString& key) const
    {
        return getTextOrComment(m_LanguageMap, url, ok, key, "Content", "text");
    }
    QString getShortTextPlainly(const QString& url, bool& ok, const QString& key) const
    {
        const QString text = getObjectFromMap(m_ShortLanguageMap, url, ok, key, "Content", "text");
        bool isFullTextOk = false;
        return text.isEmpty() ? getTextPlainly(url, isFullTextOk, key) : text;
    }
};

const QStringList languages = {"de_DE", "en_US", "POSIX", "xx_XX"};
const QStringList keys = {"A", "B", "", "text"};

int residentMegabytes()
{
    QFile statm("/proc/self/statm");
    return statm.open(QIODevice::ReadOnly) ? statm.readAll().split(' ').at(1).toInt() * 4 / 1024
                                           : -1;
}

} // namespace

class RememberedAnswersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersAsIfNothingWereRemembered_data();
    void answersAsIfNothingWereRemembered();
    void takesNoMoreMemoryForMadeUpUrls();

private:
    int below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(m_Random); }
    QString any(const QStringList& list) { return list.at(below(list.size())); }
    QJsonValue randomNode(int depth);
    QJsonObject randomDocument() { return {{"Content", randomNode(0)}}; }
    void changeSomething(const LanguageFiles& files, OpenTextManager& manager);

    std::mt19937 m_Random;
};

/** A node with texts, empty texts, numbers for texts, and faults in its structure. */
QJsonValue RememberedAnswersTest::randomNode(int depth)
{
    if (below(12) == 0)
        return "a leaf in the way";
    QJsonObject node{{"comment", "c"}};
    if (below(4) != 0)
        node.insert("text", QString::number(m_Random()));
    else if (below(2) == 0)
        node.insert("text", below(2) == 0 ? QJsonValue("") : QJsonValue(7));
    QJsonObject childs;
    for (const QString& key : keys) {
        if (depth < 2 && below(2) == 0)
            childs.insert(key, randomNode(depth + 1));
    }
    if (depth == 0)
        return childs;
    if (!childs.isEmpty())
        node.insert("childs", childs);
    return node;
}

void RememberedAnswersTest::changeSomething(const LanguageFiles& files, OpenTextManager& manager)
{
    const QString language = any(languages);
    const QString file = below(2) == 0 ? language : "short/" + language;
    auto& map = below(2) == 0 ? manager.m_LanguageMap : manager.m_ShortLanguageMap;
    switch (below(7)) {
    case 0:
        files.write(file, randomDocument());
        break;
    case 1:
        files.write(file, "{\"Content\": {\"A\": {\"text\": \"two\r\nlines\"}}}");
        break;
    case 2:
        files.write(file, "{\"Content\": {");
        break;
    case 3:
        QFile::remove(files.file(file));
        break;
    case 4:
        map.insert(language, randomDocument());
        break;
    case 5:
        map.remove(language);
        break;
    default:
        break; // nothing: the same bytes again
    }
    if (below(2) == 0)
        manager.reloadLanguage();
}

void RememberedAnswersTest::answersAsIfNothingWereRemembered_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 20; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void RememberedAnswersTest::answersAsIfNothingWereRemembered()
{
    QFETCH(unsigned, seed);
    m_Random.seed(seed);
    const LanguageFiles files;
    OpenTextManager manager(files.path(), "de_DE", "short");
    WarningCapture capture;
    const auto ask = [&](auto lookUp, const QString& url, const QString& key) {
        Outcome outcome;
        capture.take();
        outcome.text = (manager.*lookUp)(url, outcome.ok, key);
        outcome.warnings = capture.take();
        return outcome;
    };
    using LookUp = QString (TextManagerBase::*)(const QString&, bool&, const QString&) const;

    for (int round = 0; round < 60; ++round) {
        changeSomething(files, manager);
        for (int count = 0; count < 60; ++count) {
            const QString url =
                QStringList{any(keys), any(keys), any(keys)}.mid(below(3)).join('/');
            const QString key = any(languages);
            QCOMPARE(ask(LookUp(&TextManagerBase::getShortText), url, key),
                     ask(&OpenTextManager::getShortTextPlainly, url, key));
            Outcome full;
            full.text = manager.getText(url, full.ok, key, true);
            full.warnings = capture.take();
            QCOMPARE(full, ask(&OpenTextManager::getTextPlainly, url, key));
        }
    }
}

void RememberedAnswersTest::takesNoMoreMemoryForMadeUpUrls()
{
    QJsonObject document = randomDocument();
    const TextManagerBase manager("de_DE", document);
    const int before = residentMegabytes();
    bool ok = false;
    for (int count = 0; count < 200'000; ++count) {
        const QString made = QString::number(count).rightJustified(250, 'x');
        manager.getText(made, ok, "de_DE", false);
        manager.getText("A", ok, made, false);
        manager.getShortText(made, ok, made);
    }
    QVERIFY2(residentMegabytes() - before < 60, qPrintable(QString::number(residentMegabytes())));
}

QTEST_GUILESS_MAIN(RememberedAnswersTest)
#include "tst_remembered_answers.moc"
