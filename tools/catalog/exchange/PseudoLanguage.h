#pragma once

#include "TextKey.h"

#include <QHash>
#include <QJsonObject>
#include <QString>

/** A language made from the base to be looked at on the device, and read by nobody. */
class PseudoLanguage
{
public:
    enum class Style {
        Accents, ///< see accentuate()
        Urls,    ///< each text is its own URL
        Widest,  ///< each text is the widest that any language has
    };

    /** The names of the styles, the one by default first. */
    static QStringList styleNames();
    /** @param styleName one of styleNames(). */
    PseudoLanguage(const QString& styleName, bool isRightToLeft);

    /** The header's field by which such a language is known; it holds the name of the style. */
    static QString headerField();
    /** Whether a document is of such a language, and not a person's work. */
    static bool isPseudo(const QJsonObject& document);

    /** Whether addTexts() is needed. */
    bool needsAllLanguages() const { return m_Style == Style::Widest; }
    /** Compares the texts of a language with the widest so far. */
    void addTexts(const QJsonObject& document);

    /** The document of such a language: the base's, with other texts and the header of @p language.
     */
    QJsonObject make(const QString& language, const QJsonObject& base) const;

private:
    QString makeText(const QString& url, const QString& text) const;
    QJsonObject makeNode(const QString& url, const QJsonObject& node) const;
    QJsonObject makeNodes(const QString& prefix, const QJsonObject& nodes) const;

    Style m_Style = Style::Accents;
    bool m_IsRightToLeft = false;
    QHash<TextKey, QString> m_WidestTexts; ///< by URL
};
