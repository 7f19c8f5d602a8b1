#include "PseudoLanguage.h"

#include "LanguageTexts.h"
#include "PseudoTexts.h"

#include "LanguageDefinitions.h"

#include <QStringList>

QStringList PseudoLanguage::styleNames()
{
    return {QStringLiteral("accents"), QStringLiteral("urls"), QStringLiteral("widest")};
}

PseudoLanguage::PseudoLanguage(const QString& styleName, bool isRightToLeft)
    : m_Style(static_cast<Style>(styleNames().indexOf(styleName)))
    , m_IsRightToLeft(isRightToLeft)
{
}

QString PseudoLanguage::headerField()
{
    return QStringLiteral("pseudo");
}

bool PseudoLanguage::isPseudo(const QJsonObject& document)
{
    return document.value(LanguageDefinitions::getJsonHeaderName())
        .toObject()
        .contains(headerField());
}

void PseudoLanguage::addTexts(const QJsonObject& document)
{
    const LanguageTexts texts(document);
    for (const LanguageTexts::Entry& entry : texts.entries()) {
        QString& widest = m_WidestTexts[entry.url];
        if (widthOf(entry.text) > widthOf(widest))
            widest = entry.text;
    }
}

QJsonObject PseudoLanguage::make(const QString& language, const QJsonObject& base) const
{
    const QString& content = LanguageDefinitions::getJsonContentName();
    const QJsonObject header{{LanguageDefinitions::getJsonHeaderLanguageKey(), language},
                             {LanguageDefinitions::getJsonHeaderSubLanguageKey(), QString()},
                             {headerField(), styleNames().at(static_cast<int>(m_Style))}};
    return {{LanguageDefinitions::getJsonHeaderName(), header},
            {content, makeNodes(QString(), base.value(content).toObject())}};
}

QString PseudoLanguage::makeText(const QString& url, const QString& text) const
{
    QString made = text;
    if (m_Style == Style::Accents)
        made = accentuate(text);
    else if (m_Style == Style::Urls)
        made = url;
    else if (m_WidestTexts.contains(url))
        made = m_WidestTexts.value(url);
    return m_IsRightToLeft ? turnRightToLeft(made) : made;
}

QJsonObject PseudoLanguage::makeNode(const QString& url, const QJsonObject& node) const
{
    const QString prefix = url + LanguageDefinitions::getUrlSeparator();
    QJsonObject made = node;
    for (auto member = made.begin(); member != made.end(); ++member) {
        const bool isText = member.key() == LanguageDefinitions::getJsonTextName();
        const QJsonValue value = member.value();
        if (isText && value.isString())
            member.value() = makeText(url, value.toString());
        else if (member.key() == LanguageDefinitions::getJsonChildsKey())
            member.value() = makeNodes(prefix, value.toObject());
        else if (value.isObject())
            member.value() = makeNode(prefix + member.key(), value.toObject());
    }
    return made;
}

QJsonObject PseudoLanguage::makeNodes(const QString& prefix, const QJsonObject& nodes) const
{
    QJsonObject made = nodes;
    for (auto member = made.begin(); member != made.end(); ++member) {
        if (member.value().isObject())
            member.value() = makeNode(prefix + member.key(), member.value().toObject());
    }
    return made;
}
