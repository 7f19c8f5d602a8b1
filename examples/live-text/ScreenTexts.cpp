#include "ScreenTexts.h"

#include <ReadAllTextsHelper.h>
#include <TextManagerBase.h>
#include <TranslateableTextHelper.h>

#include <QLocale>

ScreenTexts::ScreenTexts(TextManagerBase& textManager)
    : m_TextManager(textManager)
    , m_StrLanguage(textManager.getLanguageName())
{
    connect(&textManager, &TextManagerBase::languageReloaded, this, [this] {
        exportTexts();
        updateLanguage();
    });
}

QObject* ScreenTexts::of(const QString& url)
{
    TranslateableTextHelper*& text = m_Texts[url];
    if (text == nullptr) {
        text = new TranslateableTextHelper(m_StrLanguage, this);
        // The slot is private, for its owner to connect by name.
        connect(this, SIGNAL(languageChanged(QString)), text, SLOT(languageGotReloaded(QString)));
        text->setTranslateableTextObject(
            ReadAllTextsHelper::getAllTextsAsVariantMap(m_TextManager, url));
    }
    return text;
}

QString ScreenTexts::nameOfLanguage(const QString& language)
{
    QString name = QLocale(language).nativeLanguageName();
    return name.replace(0, 1, name.left(1).toUpper());
}

void ScreenTexts::chooseLanguage(const QString& language)
{
    m_StrChosenLanguage = language;
    updateLanguage();
}

QStringList ScreenTexts::languages() const
{
    QStringList languages;
    const QStringList available = m_TextManager.getAvailableLanguages();
    for (const QString& language : available) {
        const bool isSpoken = !nameOfLanguage(language).isEmpty(); // POSIX is not
        if (isSpoken)
            languages.append(language);
    }
    return languages;
}

QString ScreenTexts::deviceLanguage() const
{
    return m_TextManager.getLanguageName();
}

bool ScreenTexts::isRightToLeft() const
{
    return QLocale(m_StrLanguage).textDirection() == Qt::RightToLeft;
}

void ScreenTexts::exportTexts()
{
    for (auto text = m_Texts.constBegin(); text != m_Texts.constEnd(); ++text)
        text.value()->setTranslateableTextObject(
            ReadAllTextsHelper::getAllTextsAsVariantMap(m_TextManager, text.key()));
}

void ScreenTexts::updateLanguage()
{
    m_StrLanguage = m_StrChosenLanguage.isEmpty() ? deviceLanguage() : m_StrChosenLanguage;
    Q_EMIT languageChanged(m_StrLanguage);
    Q_EMIT changed();
}
