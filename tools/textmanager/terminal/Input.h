#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>
#include <memory>
#include <optional>

/** A file or standard input, to be read as a whole or line by line. */
class Input
{
public:
    /**
     * @param path "-" stands for standard input.
     * @return null, after a message, when it cannot be read.
     */
    static std::unique_ptr<Input> open(const QString& path);
    ~Input();
    Q_DISABLE_COPY_MOVE(Input)

    /** How messages call what is opened by a path. */
    static QString nameOf(const QString& path);
    /** How messages call it: the path, or "standard input". */
    QString name() const { return m_StrName; }

    /** @return nothing, after a message, when it could not be read to its end. */
    std::optional<QByteArray> readAll();

    /**
     * Reads the next line as soon as it is there, without its line break. Of one that is too long,
     * only the beginning is kept: see isLineTooLong().
     *
     * @return false at the end, and, after a message, when it could not be read further.
     */
    bool readLine(QByteArray& line);

    /** Whether the last line was longer than the 64 MiB that are kept of one. */
    bool isLineTooLong() const { return m_IsLineTooLong; }

    /** Whether a message said that it could not be read to its end. */
    bool isBroken() const { return m_IsBroken; }

private:
    Input(const QString& name, std::FILE* file);
    void reportFailure(int error);

    const QString m_StrName;
    std::FILE* const m_File;
    bool m_IsLineTooLong = false;
    bool m_IsBroken = false;
};
