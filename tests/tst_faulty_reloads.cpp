#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "TextManagerBase.h"

#include <QDir>
#include <QTest>

#include <future>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/** A document with one text, and white space up to a size. */
QByteArray document(const QByteArray& text, int size = 0)
{
    const QByteArray bytes = R"({"Content": {"A": {"text": ")" + text + R"("}}})";
    return bytes.leftJustified(size, ' ');
}

/** Puts something else in the place of a file: a link to that, where it is none of these. */
void replaceBy(const QString& what, const QString& path)
{
    QFile::remove(path);
    if (what == "a folder")
        QDir().mkdir(path);
    else if (what == "a FIFO")
        mknod(qPrintable(path), S_IFIFO | 0600, 0);
    else if (what == "a socket")
        mknod(qPrintable(path), S_IFSOCK | 0600, 0);
    else if (what != "nothing")
        QFile::link(what == "itself" ? path : what, path);
}

} // namespace

/** A text manager whose files go bad: what was loaded stays, nothing is waited for. */
class FaultyReloadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_Files = std::make_unique<LanguageFiles>();
        m_Files->write("de", document("old"));
        m_Files->write("short/de", document("old"));
        m_Manager = std::make_unique<TextManagerBase>(m_Files->path(), "de", "short");
    }

    void keepsWhatIsReplaced_data()
    {
        addTable(R"(what
        nothing
        a folder
        a FIFO
        a socket
        /dev/zero
        /dev/full
        /dev/ptmx
        nowhere
        itself
        )");
    }
    void keepsWhatIsReplaced()
    {
        for (const char* name : {"de", "short/de"})
            replaceBy(cell("what"), m_Files->file(name));
        QCOMPARE(reloaded(), "old old");
        const TextManagerBase fresh(m_Files->path(), "de", "short"); // does not wait either
        QCOMPARE(fresh.getAvailableLanguages(), QStringList());
        QDir(m_Files->path()).rmdir("de.json");
        QFile::remove(m_Files->file("de"));
        m_Files->write("de", document("new"));
        QCOMPARE(reloaded(), "new old");
    }

    /** In a child without root's rights, where there are any. */
    void keepsWhatMayNotBeRead()
    {
        for (const char* name : {"de", "short/de"}) {
            m_Files->write(name, document("new"));
            QFile::setPermissions(m_Files->file(name), QFile::WriteOwner);
        }
        chmod(qPrintable(m_Files->path()), 0755);
        const pid_t child = fork();
        if (child == 0) {
            const bool isNobody = geteuid() != 0 || seteuid(65534) == 0;
            m_Manager->reloadLanguage();
            _exit(isNobody && m_Manager->getText("A", "de") == "old" ? 0 : 1);
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
    }

    void outlivesTheFolder()
    {
        const QString folder = QDir::cleanPath(m_Files->path());
        QVERIFY(QDir().rename(folder, folder + "-away"));
        QCOMPARE(reloaded(), "old old");
        QVERIFY(QDir().rename(folder + "-away", folder));
        m_Files->write("de", document("new"));
        QCOMPARE(reloaded(), "new old");
    }

    /** Another program appends while the file is read: all of it is loaded then, or nothing. */
    void readsWhatGrows()
    {
        const QByteArray bytes = document("new", 3'000'000);
        WarningCapture capture;
        for (int round = 0; round < 10; ++round) {
            m_Files->write("de", QByteArray());
            auto writer = std::async(std::launch::async, [&] {
                QFile file(m_Files->file("de"));
                file.open(QIODevice::Append);
                for (int start = 0; start < bytes.size(); start += 50'000)
                    file.write(bytes.mid(start, 50'000)) && file.flush();
            });
            while (writer.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
                const QString texts = reloaded();
                QVERIFY2(texts == "old old" || texts == "new old", qPrintable(texts));
            }
            QCOMPARE(reloaded(), "new old");
        }
    }

    void outlivesErrorsOfTheDisk_data() { addTable("fault\nEIO\ngone\nEINTR\nshort"); }
    /** At each call of loading. The next reload mends it, though the files are old enough not to be
     * read again without need. */
    void outlivesErrorsOfTheDisk()
    {
        const QByteArray fault = cell("fault").toUtf8();
        for (const char* name : {"de", "short/de"})
            m_Files->write(name, document("new", 100'000));
        QFile report(m_Files->path() + "report");
        QVERIFY(report.open(QIODevice::ReadWrite));
        qputenv("TEXTMANAGER_FAULT_REPORT", report.fileName().toUtf8());
        QTest::qSleep(3'100);
        int call = 0;
        QByteArray failedCalls;
        do {
            qputenv("TEXTMANAGER_FAULT", fault + ' ' + QByteArray::number(++call));
            m_Manager->reloadLanguage();
            const QString texts =
                m_Manager->getText("A", "de") + m_Manager->getShortText("A", "de");
            m_Manager = std::make_unique<TextManagerBase>(m_Files->path(), "de", "short");
            qunsetenv("TEXTMANAGER_FAULT");
            report.seek(0);
            failedCalls = report.readAll();
            report.resize(0);
            QVERIFY2(!texts.isEmpty() && reloaded() == "new new", failedCalls.constData());
        } while (!failedCalls.isEmpty());
        qInfo("%d faults", call - 1);
    }

private:
    /** The text, and the short one, after a reload, which has to come to its end. */
    QString reloaded()
    {
        auto reload = std::async(std::launch::async, [this] { m_Manager->reloadLanguage(); });
        if (reload.wait_for(std::chrono::seconds(20)) != std::future_status::ready)
            qFatal("the reload waits");
        return m_Manager->getText("A", "de") + ' ' + m_Manager->getShortText("A", "de");
    }

    std::unique_ptr<LanguageFiles> m_Files;
    std::unique_ptr<TextManagerBase> m_Manager;
};

QTEST_GUILESS_MAIN(FaultyReloadsTest)
#include "tst_faulty_reloads.moc"
