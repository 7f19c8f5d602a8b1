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

    /** How messages call it: the path, or "standard input". */
    QString name() const { return m_StrName; }

    /** @return nothing, after a message, when it could not be read to its end. */
    std::optional<QByteArray> readAll();

    /**
     * Reads the next line as soon as it is there, without its line break.
     *
     * @return false at the end, and, after a message, when it could not be read further.
     */
    bool readLine(QByteArray& line);

    /** Whether a message said that it could not be read to its end. */
    bool isBroken() const { return m_IsBroken; }

private:
    Input(const QString& name, std::FILE* file);
    void reportFailure(int error);

    const QString m_StrName;
    std::FILE* const m_File;
    char* m_Line = nullptr; ///< where getline() puts a line, as long as the longest so far
    std::size_t m_LineSize = 0;
    bool m_IsBroken = false;
};
