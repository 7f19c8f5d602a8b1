#include "Texts.h"

#include "TextFunction.h"

#include <LanguageDefinitions.h>
#include <TextManagerBase.h>

#include <QLocale>
#include <QQmlEngine>

namespace
{

/** A client may make up URLs without end. */
constexpr int mostMissingUrls = 1000;

} // namespace

Texts::Texts(QQmlEngine& engine, TextManagerBase& textManager)
    : QObject(&engine)
    , m_Engine(engine)
    , m_TextManager(textManager)
    , m_StrDeviceLanguage(textManager.getLanguageName())
    , m_TextFunction(TextFunction::makeFor(*this, engine))
    , m_ReloadListener(textManager, *this, [this](const QString& language) {
        m_StrDeviceLanguage = language;
        announce();
    })
{
}

Texts* Texts::of(const QQmlEngine& engine)
{
    return engine.findChild<Texts*>(QString(), Qt::FindDirectChildrenOnly);
}

QString Texts::nameOf(const QString& language)
{
    const QString name = QLocale(language).nativeLanguageName();
    return name.isEmpty() ? language : name.at(0).toUpper() + name.mid(1);
}

QString Texts::language() const
{
    return m_StrChosenLanguage.isEmpty() ? m_StrDeviceLanguage : m_StrChosenLanguage;
}

QStringList Texts::languages() const
{
    QStringList languages = m_TextManager.getAvailableLanguages();
    languages.removeAll(LanguageDefinitions::getSecondFallbackLanguageFilename());
    return languages;
}

bool Texts::isRightToLeft() const
{
    return QLocale(language()).textDirection() == Qt::RightToLeft;
}

void Texts::setChosenLanguage(const QString& language)
{
    if (language == m_StrChosenLanguage)
        return;
    m_StrChosenLanguage = language;
    announce();
}

QString Texts::lookUpKey() const
{
    const QString key = language();
    return key.isEmpty() ? LanguageDefinitions::getFirstFallbackLanguageFilename() : key;
}

bool Texts::isNewlyMissing(const QString& textUrl)
{
    if (m_MissingUrls.contains(textUrl))
        return false;
    if (m_MissingUrls.size() >= mostMissingUrls)
        m_MissingUrls.clear();
    m_MissingUrls.insert(textUrl);
    return true;
}

QString Texts::substituteFor(const QString& textUrl)
{
    return QLatin1Char('[') + textUrl + QLatin1Char(']');
}

void Texts::announce()
{
    // Another function, so that what keeps it in a variable of its own is notified as well.
    m_TextFunction = TextFunction::makeFor(*this, m_Engine);
    Q_EMIT changed();
}
