#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

/** The bytes that a target is given: lines that choose what is done, and then the rest. */
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : m_Rest(reinterpret_cast<const char*>(data), static_cast<int>(size))
    {
    }
    /** Takes the next line, without its end. */
    QByteArray takeLine();
    QString takeText() { return QString::fromUtf8(takeLine()); }
    const QByteArray& rest() const { return m_Rest; }

private:
    QByteArray m_Rest;
};

/** A folder whose files are written anew for each input. */
class FuzzFolder
{
public:
    QString path() const { return m_Folder.path() + '/'; }
    void write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir m_Folder;
};

/** Ends the program as a finding, with the words @p expected, unless that is so. */
void require(bool isSo, const char* expected);
