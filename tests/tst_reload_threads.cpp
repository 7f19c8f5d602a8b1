#include "LanguageFiles.h"

#include "TextManagerBase.h"

#include <QPointer>
#include <QTest>

#include <atomic>
#include <future>
#include <vector>

namespace
{

/** A document in which everything names its generation: header, keys and texts. */
QByteArray generation(int number)
{
    QString nodes;
    for (int node = 0; node < 20; ++node)
        nodes += QString(R"(, "%1-%2": {"text": "t", "comment": "c"})").arg(number).arg(node);
    const QString document = R"({"Header": {"language": "%1", "subLanguage": "%1"},
        "Content": {"A": {"text": "%1"} %2}})";
    return document.arg(number).arg(nodes).toUtf8();
}

/** Replaces the two files of a language as an editor does: each is old or new at any time. */
void writeGeneration(const LanguageFiles& files, int number)
{
    for (const QString name : {"de", "short/de"}) {
        const QString temporary = files.file(name) + ".new";
        LanguageFiles::writePath(temporary, generation(number));
        std::rename(qPrintable(temporary), qPrintable(files.file(name)));
    }
}

/** Asks for everything until told to stop. */
class Reader
{
public:
    Reader(const TextManagerBase& manager, const std::atomic<bool>& isAsking)
        : m_Manager(manager)
    {
        while (isAsking && m_Fault.isEmpty())
            ask();
    }

    int count() const { return m_Count; }
    QString fault() const { return m_Fault; }

private:
    void ask()
    {
        bool ok = false;
        take("text", m_Text, m_Manager.getText("A", "de"));
        take("text", m_Text, m_Manager.getText("A", ok, QString(), false));
        take("short text", m_ShortText, m_Manager.getShortText("A", "de"));
        take("header", m_Text,
             m_Manager.getHeaderText(TextManagerDefinitions::Language, "de", true));
        const QPair<QString, QString> header = m_Manager.getLanguageHeaderInfo("de");
        take("header", m_Text, header.first);
        if (header.first != header.second)
            m_Fault = "a header of two documents";
        const QStringList urls = m_Manager.getAvailableUrls("de");
        take("URLs", m_Text, urls.value(0).section('-', 0, 0));
        if (urls.size() != 20 || urls.filter(urls.first().section('-', 0, 0) + '-').size() != 20)
            m_Fault = "URLs of two documents: " + urls.join(' ');
        if (m_Manager.getAnsweringLanguage("A", "de") != "de" ||
            m_Manager.getAvailableLanguages() != QStringList("de"))
            m_Fault = "no language";
    }

    /** Notes an answer, which is of the same generation as the one before, or of a later one. */
    void take(const char* what, int& last, const QString& answer)
    {
        bool isNumber = false;
        const int number = answer.toInt(&isNumber);
        if (!isNumber || number < last)
            m_Fault = QString("%1: '%2' after %3").arg(what, answer).arg(last);
        last = number;
        ++m_Count;
    }

    const TextManagerBase& m_Manager;
    int m_Text = 0;
    int m_ShortText = 0;
    int m_Count = 0;
    QString m_Fault;
};

} // namespace

/** Text managers that are used, told of and deleted in several threads at once. */
class ReloadThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_Files = std::make_unique<LanguageFiles>();
        for (const char* name : {"de", "short/de"})
            m_Files->write(name, generation(0));
        m_Manager = std::make_unique<TextManagerBase>(m_Files->path(), "de", "short");
    }

    void answersOfWholeDocuments()
    {
        std::atomic<bool> isAsking{true};
        std::vector<std::future<Reader>> readers;
        for (int reader = 0; reader < 8; ++reader)
            readers.push_back(
                std::async(std::launch::async, [&] { return Reader(*m_Manager, isAsking); }));
        for (int round = 1; round <= rounds(); ++round) {
            writeGeneration(*m_Files, round);
            m_Manager->reloadLanguage();
        }
        isAsking = false;
        int answers = 0;
        for (std::future<Reader>& future : readers) {
            const Reader reader = future.get();
            QCOMPARE(reader.fault(), QString());
            QVERIFY(reader.count() > 0);
            answers += reader.count();
        }
        QCOMPARE(m_Manager->getText("A", "de"), QString::number(rounds()));
        qInfo("%d answers, %d reloads", answers, rounds());
    }

    void isDeletedByAReceiver()
    {
        for (int round = 0; round < rounds() / 5; ++round) {
            QPointer<TextManagerBase> manager = new TextManagerBase(m_Files->path(), "de", "short");
            connect(
                manager, &TextManagerBase::languageReloaded, this, [=] { delete manager.data(); },
                Qt::QueuedConnection);
            std::async(std::launch::async, [=] {
                manager->reloadLanguage();
                manager->reloadLanguage(); // told when there is nobody to tell it any more
            }).get();
            QTRY_VERIFY(manager.isNull());
        }
    }

private:
    static int rounds()
    {
        return qEnvironmentVariableIsSet("TEXTMANAGER_LONG_ATTACK") ? 2000 : 100;
    }

    std::unique_ptr<LanguageFiles> m_Files;
    std::unique_ptr<TextManagerBase> m_Manager;
};

QTEST_GUILESS_MAIN(ReloadThreadsTest)
#include "tst_reload_threads.moc"
