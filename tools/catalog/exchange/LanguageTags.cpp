#include "LanguageTags.h"

#include <QRegularExpression>

namespace
{

/** The subtag for what a key may have behind "@": a script where it names one, or else a variant.
 */
QString subtagOfModifier(const QString& modifier)
{
    if (modifier == QLatin1String("latin"))
        return QStringLiteral("Latn");
    if (modifier == QLatin1String("cyrillic"))
        return QStringLiteral("Cyrl");
    if (modifier == QLatin1String("devanagari"))
        return QStringLiteral("Deva");
    return modifier;
}

bool isScript(const QString& subtag)
{
    return subtag.size() == 4 && !subtag.at(0).isDigit();
}

} // namespace

QString tagOfLanguage(const QString& languageKey)
{
    const QString name = QString(languageKey.section(QLatin1Char('@'), 0, 0))
                             .replace(QLatin1Char('_'), QLatin1Char('-'));
    const QString modifier = subtagOfModifier(languageKey.section(QLatin1Char('@'), 1));
    const QString language = name.section(QLatin1Char('-'), 0, 0);
    const QString others = name.mid(language.size());
    QString tag = language;
    if (isScript(modifier))
        tag += QLatin1Char('-') + modifier + others;
    else
        tag += others + (modifier.isEmpty() ? QString() : QLatin1Char('-') + modifier);
    static const QRegularExpression wellFormed(
        QStringLiteral("^[A-Za-z]{2,3}(-[A-Za-z]{4})?(-[A-Za-z]{2}|-[0-9]{3})?"
                       "(-[A-Za-z0-9]{5,8}|-[0-9][A-Za-z0-9]{3})*(-x(-[A-Za-z0-9]{1,8})+)?$"));
    return wellFormed.match(tag).hasMatch() ? tag : QString();
}

QString explainMissingTag(const QString& languageKey)
{
    return QStringLiteral(
               "'%1' names no language that XLIFF could tell (BCP 47): expected a "
               "language and, if wanted, a country, as in de_DE. Take PO or TSV, or name "
               "the language file after its language.")
        .arg(languageKey);
}

bool isSameLanguage(const QString& name, const QString& languageKey)
{
    if (name == languageKey)
        return true;
    const QString tag = tagOfLanguage(name);
    return !tag.isEmpty() && tag.compare(tagOfLanguage(languageKey), Qt::CaseInsensitive) == 0;
}
