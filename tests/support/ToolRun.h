#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
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
    /** Standard output as JSON; empty when it is no object. */
    QJsonObject outputObject() const;
    QString messages() const { return m_StrMessages; }

private:
    int m_ExitStatus = -1; ///< -1 after a crash
    QString m_StrOutput;
    QString m_StrMessages;
};
