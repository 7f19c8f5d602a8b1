#include "ExchangeFormat.h"

#include "PoFormat.h"
#include "TsvFormat.h"
#include "XliffFormat.h"

#include <QFileInfo>

namespace
{

struct Entry {
    const ExchangeFormat& format;
    QString name;
    QStringList extensions;
};

const QVector<Entry>& formats()
{
    static const XliffFormat xliff;
    static const PoFormat po;
    static const TsvFormat tsv;
    static const QVector<Entry> entries = {
        {xliff, QStringLiteral("xliff"), {QStringLiteral("xlf"), QStringLiteral("xliff")}},
        {po, QStringLiteral("po"), {QStringLiteral("po")}},
        {tsv, QStringLiteral("tsv"), {QStringLiteral("tsv"), QStringLiteral("tab")}},
    };
    return entries;
}

} // namespace

QStringList ExchangeFormat::names()
{
    QStringList names;
    for (const Entry& entry : formats())
        names.append(entry.name);
    return names;
}

const ExchangeFormat* ExchangeFormat::byName(const QString& name)
{
    for (const Entry& entry : formats()) {
        if (entry.name == name)
            return &entry.format;
    }
    return nullptr;
}

const ExchangeFormat* ExchangeFormat::byExtension(const QString& path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    for (const Entry& entry : formats()) {
        if (entry.extensions.contains(extension))
            return &entry.format;
    }
    return nullptr;
}

QString ExchangeFormat::findRefusal(const QString&) const
{
    return QString();
}
