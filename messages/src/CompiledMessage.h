#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <unicode/msgfmt.h>

#include <memory>
#include <vector>

/** A message pattern, ready to be formatted in one language; one thread at a time. */
class CompiledMessage
{
public:
    CompiledMessage(const QString& pattern, const QString& languageKey);

    /**
     * Fills the arguments in.
     *
     * @param error receives the reason when they, or the pattern, will not do; else untouched.
     * @return the message; empty after an error.
     */
    QString format(const QVariantMap& arguments, QString& error);

private:
    bool takeArguments(const QVariantMap& arguments, QString& error);

    QString m_StrError; ///< what is wrong with the pattern
    QStringList m_ArgumentNames;
    std::vector<icu::UnicodeString> m_IcuNames; ///< the same names in the same order
    std::vector<icu::Formattable> m_Values;     ///< in that order, too
    icu::UnicodeString m_Message; ///< a member, as the values are, so that its memory is used again
    std::unique_ptr<icu::MessageFormat> m_Format;
};
