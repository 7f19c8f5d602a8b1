#include "TextManagerReferenceParameters.h"

#include "TextManagerBase.h"

#include <QDebug>

TextManagerReferenceParameters::TextManagerReferenceParameters(const TextManagerBase& textManager,
                                                               const QString& language)
    : m_TextManager(textManager)
    , m_StrLanguage(language)
{
}

TextManagerReferenceParameters::~TextManagerReferenceParameters() = default;

const TextManagerBase& TextManagerReferenceParameters::getTextManager() const
{
    return m_TextManager;
}

QString TextManagerReferenceParameters::getLanguage() const
{
    return m_StrLanguage;
}

void TextManagerReferenceParameters::setReadMode(ReadMode readMode)
{
    m_ReadMode = readMode;
}

QString TextManagerReferenceParameters::getText(const QString& textUrl) const
{
    switch (m_ReadMode) {
    case NormalText:
        break;
    case ShortText:
        return getShortText(textUrl);
    default:
        qWarning() << "Received invalid read mode, reading normal text version!";
    }
    return m_TextManager.getText(textUrl, m_StrLanguage);
}

QString TextManagerReferenceParameters::getShortText(const QString& textUrl) const
{
    // The form with the flag takes the mutex once, as the mutex of a manager built in memory wants.
    bool isShortText = false;
    return m_TextManager.getShortText(textUrl, isShortText, m_StrLanguage);
}
