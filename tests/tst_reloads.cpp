#include "LanguageFiles.h"
#include "WarningCapture.h"

#include "TextManagerBase.h"

#include <QFile>
#include <QTest>

#include <cstring>
#include <random>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

class OpenTextManager : public TextManagerBase
{
public:
    using TextManagerBase::m_LanguageMap;
    using TextManagerBase::m_ShortLanguageMap;
    using TextManagerBase::TextManagerBase;
};

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

/** Puts both times of a file back that can be put back, when it goes. */
class TimeKeeper
{
public:
    explicit TimeKeeper(const QString& path)
        : m_Path(QFile::encodeName(path))
    {
        stat(m_Path.constData(), &m_Status);
    }
    ~TimeKeeper()
    {
        const timespec times[] = {m_Status.st_atim, m_Status.st_mtim};
        utimensat(AT_FDCWD, m_Path.constData(), times, 0);
    }
    Q_DISABLE_COPY_MOVE(TimeKeeper)

private:
    const QByteArray m_Path;
    struct stat m_Status = {};
};

} // namespace

class ReloadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatChanged();
    void readsWhatWasJustWritten();
    void sharesDocumentsOfEqualFiles();

private:
    int below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(m_Random); }
    QByteArray randomContent();
    void change(const LanguageFiles& files);
    void compareReload(const LanguageFiles& files, OpenTextManager& manager);

    static constexpr int m_FileCount = 60;
    std::mt19937 m_Random;
    WarningCapture* m_Capture = nullptr;
    QMap<QString, QJsonObject> m_Expected;
};

/** Mostly of one length, so that the size of a file tells nothing. */
QByteArray ReloadsTest::randomContent()
{
    const QByteArray content =
        R"({"Content": {"A": {"text": ")" + QByteArray::number(below(9)) + R"("}}})";
    const QByteArray other[] = {QByteArray(content).replace("Content", "content"),
                                QByteArray(content).replace('}', ' '), "{}", content + '\n'};
    return below(4) == 0 ? other[below(4)] : content;
}

void ReloadsTest::change(const LanguageFiles& files)
{
    const auto anyPath = [&] { // also one that was not there before
        return files.file("l" + QString::number(below(2 * m_FileCount)));
    };
    const QString path = anyPath();
    const TimeKeeper keeper(below(2) == 0 ? path : QString());
    const auto rewrite = [&] { LanguageFiles::writePath(path, randomContent()); };
    const auto replace = [&](const QString& source) {
        const TimeKeeper timesOfTheOld(below(2) == 0 ? path : QString());
        rename(qPrintable(source), qPrintable(path));
    };
    switch (below(6)) {
    case 0:
        return rewrite();
    case 1:
        LanguageFiles::writePath(files.path() + "new", randomContent());
        return replace(files.path() + "new");
    case 2:
        return replace(anyPath());
    case 3:
        QFile::resize(path, below(2));
        return;
    case 4:
        utimensat(AT_FDCWD, qPrintable(path), nullptr, 0);
        return;
    default:
        QFile::remove(path);
        return rewrite();
    }
}

/** A reload leaves and warns of what reading everything would. */
void ReloadsTest::compareReload(const LanguageFiles& files, OpenTextManager& manager)
{
    m_Capture->take();
    manager.reloadLanguage();
    const QStringList warnings = m_Capture->take();
    const OpenTextManager fresh(files.path(), "de_DE", "short");
    QCOMPARE(warnings, m_Capture->take());
    for (auto it = fresh.m_LanguageMap.begin(); it != fresh.m_LanguageMap.end(); ++it)
        m_Expected.insert(it.key(), it.value()); // what has vanished stays
    QCOMPARE(manager.m_LanguageMap, m_Expected);
}

void ReloadsTest::readsWhatChanged()
{
    WarningCapture capture;
    m_Capture = &capture;
    const LanguageFiles files;
    for (int i = 0; i < m_FileCount; ++i)
        files.write("l" + QString::number(i), randomContent());
    const LanguageFiles elsewhere;
    for (const QString name : {"late0", "late1"})
        QFile::link(elsewhere.file(name), files.file(name));
    OpenTextManager manager(files.path(), "de_DE", "short");
    const OpenedFiles opened(files);
    for (int epoch = 0; epoch < 2 && !QTest::currentTestFailed(); ++epoch) {
        compareReload(files, manager);
        QTest::qSleep(3'100); // until the times of the files tell of every change from then on
        manager.reloadLanguage();
        opened.takeCount();
        manager.reloadLanguage();
        QCOMPARE(opened.takeCount(), 0);
        elsewhere.write("late" + QString::number(epoch), randomContent());
        compareReload(files, manager); // a link is no longer dead
        for (int round = 0; round < 200 && !QTest::currentTestFailed(); ++round) {
            change(files);
            compareReload(files, manager);
        }
    }
}

/** More often than the clock of a file system may tick, and of one size. */
void ReloadsTest::readsWhatWasJustWritten()
{
    const LanguageFiles files;
    TextManagerBase manager(files.path(), "de_DE", "short");
    for (int count = 10; count < 99; ++count) {
        const QByteArray text = QByteArray::number(count);
        files.write("de_DE", R"({"Content": {"A": {"text": ")" + text + R"("}}})");
        manager.reloadLanguage();
        QCOMPARE(manager.getText("A", "de_DE"), text);
    }
    const OpenedFiles opened(files); // what is young is read, even if this clock ticks fast
    manager.reloadLanguage();
    QVERIFY(opened.takeCount() > 0);
}

void ReloadsTest::sharesDocumentsOfEqualFiles()
{
    const LanguageFiles files;
    for (const char* name : {"en_US", "POSIX", "short/en_US"})
        files.write(name, R"({"Content": {"A": {"text": "en"}}})");
    files.write("en_GB", R"({"Content": {"A": {"text": "gb"}}})");
    const OpenTextManager manager(files.path(), "en_US", "short");
    const QJsonObject document = manager.m_LanguageMap["en_US"];
    const auto isShared = [&](const QJsonObject& other) {
        return std::memcmp(&document, &other, sizeof document) ==
               0; // nothing but a pointer to the data
    };
    QVERIFY(isShared(manager.m_LanguageMap["POSIX"]));
    QVERIFY(isShared(manager.m_ShortLanguageMap["en_US"]));
    QVERIFY(!isShared(manager.m_LanguageMap["en_GB"]));
}

QTEST_GUILESS_MAIN(ReloadsTest)
#include "tst_reloads.moc"
