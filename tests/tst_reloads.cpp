#include "OpenTextManager.h"

#include <QFile>

#include <cstring>
#include <random>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/** Watches which files of a folder are opened. */
class OpenedFiles
{
public:
    explicit OpenedFiles(const LanguageFiles& files)
    {
        inotify_add_watch(m_Descriptor, qPrintable(files.path()), IN_OPEN);
    }
    ~OpenedFiles() { close(m_Descriptor); }
    Q_DISABLE_COPY_MOVE(OpenedFiles)

    int takeCount() const
    {
        int count = 0;
        char buffer[4096];
        for (ssize_t size; (size = read(m_Descriptor, buffer, sizeof buffer)) > 0;) {
            for (ssize_t i = 0; i < size;) {
                inotify_event event;
                std::memcpy(&event, buffer + i, sizeof event);
                count += (event.mask & IN_ISDIR) == 0 ? 1 : 0; // the folder is listed, of course
                i += static_cast<ssize_t>(sizeof event + event.len);
            }
        }
        return count;
    }

private:
    const int m_Descriptor = inotify_init1(IN_NONBLOCK);
};

} // namespace

class ReloadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatChanged()
    {
        WarningCapture capture;
        const LanguageFiles files;
        for (int i = 0; i < m_FileCount; ++i)
            files.write("l" + QString::number(i), randomContent());
        const LanguageFiles elsewhere;
        for (const QString name : {"late0", "late1"})
            QFile::link(elsewhere.file(name), files.file(name));
        OpenTextManager manager(files.path(), "de_DE", "short");
        const OpenedFiles opened(files);
        for (int epoch = 0; epoch < 2 && !QTest::currentTestFailed(); ++epoch) {
            manager.reloadAndCompare(files, capture);
            QTest::qSleep(3'100); // until the times of the files tell of every change from then on
            manager.reloadLanguage();
            opened.takeCount();
            manager.reloadLanguage();
            QCOMPARE(opened.takeCount(), 0);
            elsewhere.write("late" + QString::number(epoch), randomContent());
            manager.reloadAndCompare(files, capture); // a link is no longer dead
            for (int round = 0; round < 200 && !QTest::currentTestFailed(); ++round) {
                change(files);
                manager.reloadAndCompare(files, capture);
            }
        }
    }

    /** More often than the clock of a file system may tick, and of one size. */
    void readsWhatWasJustWritten()
    {
        const LanguageFiles files;
        TextManagerBase manager(files.path(), "de_DE", "short");
        for (int count = 10; count < 99; ++count) {
            const QByteArray text = QByteArray::number(count);
            files.writeText("de_DE", text);
            manager.reloadLanguage();
            QCOMPARE(manager.getText("A", "de_DE"), text);
        }
        const OpenedFiles opened(files); // what is young is read, even if this clock ticks fast
        manager.reloadLanguage();
        QVERIFY(opened.takeCount() > 0);
    }

    void sharesDocumentsOfEqualFiles()
    {
        const LanguageFiles files;
        for (const char* name : {"en_US", "POSIX", "short/en_US"})
            files.writeText(name, "en");
        files.writeText("en_GB", "gb");
        const OpenTextManager manager(files.path(), "en_US", "short");
        const QJsonObject document = manager.m_LanguageMap["en_US"];
        const auto isShared = [&](const QJsonObject& other) { // a pointer to the data, no more
            return std::memcmp(&document, &other, sizeof document) == 0;
        };
        QVERIFY(isShared(manager.m_LanguageMap["POSIX"]));
        QVERIFY(isShared(manager.m_ShortLanguageMap["en_US"]));
        QVERIFY(!isShared(manager.m_LanguageMap["en_GB"]));
    }

private:
    int below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(m_Random); }

    /** Mostly of one length, so that the size of a file tells nothing. */
    QByteArray randomContent()
    {
        const QByteArray content =
            "{\"Content\": {\"A\": {\"text\": \"" + QByteArray::number(below(9)) + "\"}}}";
        const QByteArray other[] = {QByteArray(content).replace("Content", "content"),
                                    QByteArray(content).replace('}', ' '), "{}", content + '\n'};
        return below(4) == 0 ? other[below(4)] : content;
    }

    /** Changes a file; as often as not it has the times of the old one afterwards. */
    void change(const LanguageFiles& files)
    {
        const auto anyPath = [&] { // also one that was not there before
            return files.file("l" + QString::number(below(2 * m_FileCount)));
        };
        const QString path = anyPath();
        struct stat status = {};
        const bool isTimeKept = stat(qPrintable(path), &status) == 0 && below(2) == 0;
        const QString replacement = below(2) == 0 ? anyPath() : files.path() + "new";
        switch (below(5)) {
        case 0:
            LanguageFiles::writePath(path, randomContent());
            break;
        case 1:
            files.writeFile("new", randomContent());
            rename(qPrintable(replacement), qPrintable(path));
            break;
        case 2:
            QFile::resize(path, below(2));
            break;
        case 3:
            utimensat(AT_FDCWD, qPrintable(path), nullptr, 0);
            return;
        default:
            QFile::remove(path);
            LanguageFiles::writePath(path, randomContent());
        }
        const timespec times[] = {status.st_atim, status.st_mtim};
        if (isTimeKept)
            utimensat(AT_FDCWD, qPrintable(path), times, 0);
    }

    static constexpr int m_FileCount = 60;
    std::mt19937 m_Random;
};

QTEST_GUILESS_MAIN(ReloadsTest)
#include "tst_reloads.moc"
