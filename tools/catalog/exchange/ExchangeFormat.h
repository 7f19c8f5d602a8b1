#pragma once

#include "ExchangeFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/** A way to write texts down for translators' tools, and to read what comes back of them. */
class ExchangeFormat
{
public:
    /** The names of all formats. */
    static QStringList names();
    /** The format called @p name; null when there is none. It lives as long as the program. */
    static const ExchangeFormat* byName(const QString& name);
    /** The format that a file of this name has; null when its extension tells none. */
    static const ExchangeFormat* byExtension(const QString& path);

    ExchangeFormat() = default;
    virtual ~ExchangeFormat() = default;
    Q_DISABLE_COPY_MOVE(ExchangeFormat)

    /** The extension of its files, without a dot. */
    virtual QString extension() const = 0;
    /** Why texts of @p languageKey cannot be written in this format; empty when they can. */
    virtual QString findRefusal(const QString& languageKey) const;
    virtual QByteArray write(const ExchangeFile& file) const = 0;
    /**
     * Reads a file whole.
     *
     * @param file receives what is in it.
     * @return why it cannot be read; what @p file holds is then not to be used.
     */
    virtual std::optional<ExchangeFault> read(const QByteArray& bytes,
                                              ExchangeFile& file) const = 0;
};
