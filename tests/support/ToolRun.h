#pragma once

#include <QStringList>

/** One whole run of the program textmanager, or of another, as a user starts it, and what came of
 * it. */
class ToolRun
{
public:
    /** Runs the program to its end; one that does not end in time ends the test program. */
    explicit ToolRun(const QStringList& arguments, const QByteArray& input = QByteArray(),
                     const QString& workingDirectory = QString(),
                     const QString& program = TEXTMANAGER_PROGRAM);

    int exitStatus() const { return m_ExitStatus; }
    QString output() const { return m_StrOutput; }
    QString messages() const { return m_StrMessages; }
    /** Whether @p part is in the messages; when it is empty, whether there are none. */
    bool says(const QString& part) const
    {
        return part.isEmpty() ? m_StrMessages.isEmpty() : m_StrMessages.contains(part);
    }

private:
    int m_ExitStatus = -1; ///< -1 after a crash
    QString m_StrOutput;
    QString m_StrMessages;
};

class LanguageFiles;

/** Holds a run against the cells "exit" and "message" of the row, and "output" where it is one. In
 * these, "DIR" stands for the folder. */
void compareWithRow(const ToolRun& run, const LanguageFiles& files);
