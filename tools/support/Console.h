#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// How the programs speak. What goes to a terminal has its control characters shown as in
// withVisibleControls(), so that no text or file name moves the cursor or worse; what goes into a
// file or a pipe is exact.

/** A number of things, such as "1 text" or "2 texts". */
QString counted(qint64 count, const char* noun);

/** How the program ends. */
enum ExitStatus : int {
    Done = 0,
    AnswerIsNo = 1,    ///< not found, or there are findings
    UnusableInput = 2, ///< wrong usage, or input that cannot be used
};

/** Writes a part of the result, in UTF-8, to standard output. */
void printPart(const QByteArray& part);
/** Writes one line of the result, in UTF-8, to standard output. */
void printResult(const QByteArray& line);
/** Writes one line of the result to standard output. */
void printResult(const QString& line);
/** Writes lines of the result that the caller has painted with control sequences, and in which it
 * has shown the controls of texts and file names itself. */
void printPaintedResult(const QString& lines);
/** Writes the result for machines to standard output, in one line. */
void printResult(const QJsonObject& object);
/** Writes one line that is no result to standard error, with the program's name before it. */
void printMessage(const QString& message);

/** The text with "\u001b" in the place of such a character, and so for every control character but
 * line breaks and tabs. A JSON text stays the same JSON. */
QByteArray withVisibleControls(const QByteArray& utf8);

/** Makes the library's warnings messages of this program. */
void installMessageHandler();

/** Holds back the library's warnings for as long as it lives. */
class SilencedWarnings
{
public:
    SilencedWarnings();
    ~SilencedWarnings();
    Q_DISABLE_COPY_MOVE(SilencedWarnings)

private:
    QtMessageHandler m_PreviousHandler;
};

/** Hands what was printed so far to whoever reads it. @return whether that could be done. */
bool flushResult();

/** As flushResult(). @return why it could not be done, once; empty when it could. */
QString takeResultFault();

/** @return @p status, or UnusableInput, with a message, when a result could not be written. */
int finishOutput(int status);
