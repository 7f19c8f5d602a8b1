#pragma once

#include "ExchangeFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/**
 * Reads a PO file entry by entry. What gettext's own library reads into texts that end at U+0000,
 * from files only, and with a handler that may not return, is read here as values.
 */
class PoReader
{
public:
    /** @param file receives what is read, and must outlive this object. */
    explicit PoReader(ExchangeFile& file)
        : m_File(file)
    {
    }

    std::optional<ExchangeFault> read(const QByteArray& bytes);

private:
    /** One entry as far as it is read. */
    struct Entry {
        std::optional<QString> context;
        std::optional<QString> id;
        std::optional<QString> text;
        QString previousId;
        QStringList comment;
        bool isFuzzy = false;
        bool hasPlural = false;
        int line = 0;
    };

    void readLine(const QString& line);
    void readComment(const QString& line);
    void readKeyword(const QString& line, QString::size_type start);
    QString* targetOf(const QString& keyword);
    QString* beginText(std::optional<QString>& part);
    void readString(const QString& line, QString::size_type start);
    void finishEntry();
    void readHeader(const QString& fields);
    void fail(QString::size_type index, const QString& reason);

    ExchangeFile& m_File;
    std::optional<ExchangeFault> m_Fault;
    Entry m_Entry;
    QString* m_pTarget = nullptr; ///< what a string on a line of its own continues
    QString m_StrUnused;          ///< takes texts that are not used
    int m_Line = 0;
    bool m_HasEntry = false;
};
