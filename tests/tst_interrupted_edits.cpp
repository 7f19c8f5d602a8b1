#include "LanguageFiles.h"
#include "ToolRun.h"

#include <QDir>
#include <QTest>

#include <future>

namespace
{

using Folder = QMap<QString, QByteArray>; ///< bytes of files by their paths

const QString recordName = ".textmanager-base-texts";

/** For when there is time: each call fails in each way, and not only those that are likely to. */
bool isLong()
{
    return qEnvironmentVariableIsSet("TEXTMANAGER_LONG_ATTACK");
}

/** Whether a file counts: neither locks nor what is hidden and nobody reads. */
bool isCounted(const QString& path)
{
    return !path.endsWith(".lock") && !path.endsWith(".new") && !path.endsWith("unfinished-pack") &&
           !path.contains("/.new.") && !path.contains("/.out.");
}

Folder contentOf(const LanguageFiles& files)
{
    Folder folder = files.readAll();
    for (const QString& path : folder.keys()) {
        if (!isCounted(path))
            folder.remove(path);
    }
    return folder;
}

/** One file in the same words for each language; large enough to be saved in several pieces. */
QByteArray document(const QByteArray& language)
{
    return R"({"Content": {"M": {"text": ")" + language + R"( text", "comment": ")" +
           QByteArray(20'000, 'x') + R"("}, "N": {"text": "n", "comment": "c"}}})";
}

/** A folder in which de is stale, and fr not begun. */
void fill(const LanguageFiles& files, bool hasRecord)
{
    QDir(files.path()).removeRecursively();
    QDir().mkpath(files.path());
    for (const QByteArray name :
         {"de", "en_US", "short/de", "in/de", "in/en_US", "out/de", "out/en_US"})
        files.write(name, document(name));
    files.write("fr", R"({"Content": {"M": {"text": "", "comment": ""}}})");
    files.writeFile("batch", "M\tnew\nO\tnew\tc\n");
    for (const QByteArray language : {"de", "fr"})
        files.writeFile(language + ".po",
                        "msgid \"\"\nmsgstr \"Language: " + language +
                            "\\n\"\nmsgctxt \"M\"\nmsgid \"en_US text\"\nmsgstr \"new\"\n");
    if (hasRecord)
        files.writeFile(recordName, "base\ten_US\nM\tde\told\nM\ten_US\ten_US text\n");
}

/** A lock that names no process is known by its age: what would be waited for is over. */
void ageLocks(const LanguageFiles& files)
{
    const QString words = "DIR -name *.lock -exec touch -d -1min {} +";
    QCOMPARE(ToolRun(files.words(words), {}, {}, "find").exitStatus(), 0);
}

/**
 * Runs a command in the folder and lets one call fail.
 * @return the call; empty when there were fewer calls.
 */
ToolRun runWithFault(const QStringList& words, const QString& fault, const QString& folder,
                     QByteArray& failedCall)
{
    const QTemporaryDir other;
    const QString report = other.filePath("report");
    LanguageFiles::writePath(report, QByteArray());
    const QStringList setting = {FAULTY_CALLS, "TEXTMANAGER_FAULT=" + fault,
                                 "TEXTMANAGER_FAULT_REPORT=" + report, TEXTMANAGER_PROGRAM};
    const ToolRun run(setting + words, {}, folder, "env");
    failedCall = LanguageFiles::readPath(report).split('\n').first();
    return run;
}

} // namespace

/** The tool while its disk fails, the device loses its power, or another one edits. */
class InterruptedEditsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loseNothing_data()
    {
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("fault");
        QStringList faults = {"kill change",  "EIO change",  "EIO readdir64",
                              "ENOSPC write", "EINTR write", "short write"};
        if (isLong()) // between two changes a killed edit leaves what the first of them left
            faults =
                QStringList{"kill change", "EIO", "gone change", "EINTR", "short", "ENOSPC change"};
        for (const char* words :
             {"set DIR en_US M --text new", "set DIR de --batch DIR/batch",
              "rename DIR M O/P --short-folder short", "import DIR DIR/de.po DIR/fr.po",
              "pack DIR/in -o DIR/out --languages de,en_US --force", "pack DIR -o DIR/out/new"}) {
            for (const QString& fault : qAsConst(faults))
                QTest::addRow("%s, %s", words, qPrintable(fault)) << words << fault;
        }
    }
    /** At each call that an edit makes. */
    void loseNothing()
    {
        QFETCH(const QString, words);
        QFETCH(const QString, fault);
        const QStringList command = m_Files.words(words);
        const bool hasRecord = !words.contains("new");
        fill(m_Files, hasRecord);
        m_Before = contentOf(m_Files);
        QCOMPARE(ToolRun(command).exitStatus(), 0);
        m_After = contentOf(m_Files);
        QVERIFY(m_Before != m_After);

        int call = 0;
        QByteArray failedCall;
        do {
            fill(m_Files, hasRecord);
            QStringList at = fault.split(' ');
            at.insert(1, QString::number(++call));
            const ToolRun run = runWithFault(command, at.join(' '), m_Files.path(), failedCall);
            if (!failedCall.isEmpty())
                compare(command, run, fault.startsWith("kill"));
            if (QTest::currentTestFailed())
                qWarning() << at << failedCall << run.exitStatus() << run.messages();
        } while (!failedCall.isEmpty());
        QVERIFY(call > 1); // the calls did go through what lets them fail
        qInfo("%d faults", call - 1);
    }

    /** Each of its own texts, as fast as they can. */
    void loseNothingOfTwoEditors()
    {
        fill(m_Files, false);
        const int rounds = isLong() ? 300 : 20;
        const auto edit = [&](const QString& words) {
            int done = 0;
            for (int round = 0; round < rounds; ++round)
                done += ToolRun(m_Files.words(words.arg(round))).exitStatus() == 0 ? 1 : 0;
            return done;
        };
        auto other =
            std::async(std::launch::async, [&] { return edit("set DIR de O%1 --text t"); });
        QCOMPARE(edit("set DIR de P%1 --text t"), rounds);
        QCOMPARE(other.get(), rounds);
        const QJsonObject document = parseObject(m_Files.read("de"));
        QCOMPARE(document["Content"].toObject().size(), 2 + 2 * rounds);
        qInfo("%d edits", 2 * rounds);
    }

private:
    /** Holds what a faulty run left, and what the same again makes of it, against the two folders.
     */
    void compare(const QStringList& command, const ToolRun& run, bool isKilled)
    {
        QCOMPARE(run.exitStatus() < 0, isKilled);
        const Folder left = contentOf(m_Files);
        const QString record = m_Files.path() + recordName;
        const QString german = m_Files.file("de");
        for (const QString& path : left.keys() + m_After.keys()) {
            const QByteArray bytes = left.value(path);
            // One of two files that were to be imported could not be read: said, and the record
            // says so.
            const bool isOfOneImport = run.exitStatus() == 1 && path == record;
            QVERIFY2(bytes == m_Before.value(path) || bytes == m_After.value(path) || isOfOneImport,
                     qPrintable(path));
        }
        QVERIFY(left == m_After || run.exitStatus() != 0);
        if (left == m_After)
            return;
        if (left != m_Before) {
            const bool isPack = command.first() == "pack";
            const ToolRun check({"check", isPack ? command.at(3) : command.at(1)});
            QVERIFY(isPack ? check.exitStatus() != 0 : check.output().contains("-text "));
        }
        ageLocks(m_Files);
        const ToolRun again(command);
        QVERIFY2(again.exitStatus() == 0, qPrintable(again.messages()));
        Folder mended = contentOf(m_Files);
        // A text that is there already is not written again: it counts as stale until it is marked.
        if (command.first() == "set" && left.value(german) != m_Before.value(german)) {
            QVERIFY(mended.value(record).contains("\nM\tde\told\n"));
            mended.insert(record, m_After.value(record));
        }
        QVERIFY(mended == m_After);
    }

    const LanguageFiles m_Files{};
    Folder m_Before;
    Folder m_After;
};

QTEST_GUILESS_MAIN(InterruptedEditsTest)
#include "tst_interrupted_edits.moc"
