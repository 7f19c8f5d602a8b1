#include "DeviceTextContent.h"

#include "Placeholders.h"
#include "Texts.h"

#include <TextManagerBase.h>
#ifdef TEXTMANAGER_HAS_MESSAGES
#include <TextMessages.h>
#endif

#include <QLocale>
#include <QQmlEngine>
#include <QQmlInfo>

void DeviceTextContent::start()
{
    const QQmlEngine* engine = qmlEngine(this);
    m_Texts = engine == nullptr ? nullptr : Texts::of(*engine);
    if (m_Texts == nullptr || m_Label == nullptr)
        return;
    connect(m_Texts, &Texts::changed, this, &DeviceTextContent::update);
    connect(m_Label, &QQuickItem::widthChanged, this, &DeviceTextContent::fitLater);
    connect(m_Label, &QQuickItem::heightChanged, this, &DeviceTextContent::fitLater);
    // The class of a Text of Qt Quick is not public.
    connect(m_Label, SIGNAL(fontChanged(QFont)), this, SLOT(fontChanged()));
    update();
}

void DeviceTextContent::setUrl(const QString& url)
{
    if (url == m_StrUrl)
        return;
    m_StrUrl = url;
    Q_EMIT urlChanged();
    update();
}

void DeviceTextContent::setArgs(const QVariantMap& arguments)
{
    if (arguments == m_Arguments)
        return;
    m_Arguments = arguments;
    Q_EMIT argsChanged();
    update();
}

void DeviceTextContent::update()
{
    if (m_Texts == nullptr)
        return;
    const QString full = fullText();
    const bool isSame = full == m_StrFull && (!m_IsShort || shortText() == m_StrShort);
    m_StrFull = full;
    if (!isSame)
        fit();
}

QString DeviceTextContent::fullText() const
{
    const QString key = m_Texts->lookUpKey();
    if (m_StrUrl.isEmpty())
        return QString();
#ifdef TEXTMANAGER_HAS_MESSAGES
    if (!areArgumentsNumbered()) {
        const QString message =
            TextMessages(m_Texts->textManager()).getMessage(m_StrUrl, m_Arguments, key);
        if (!message.isEmpty())
            return message;
    }
#endif
    bool isThere = false;
    const QString text = m_Texts->textManager().getText(m_StrUrl, isThere, key, false);
    if (text.isEmpty() && !isThere)
        return missingText();
    return replacedArguments(text);
}

QString DeviceTextContent::shortText() const
{
    const QString key = m_Texts->lookUpKey();
    bool isThere = false;
    const QString text = m_Texts->textManager().getShortText(m_StrUrl, isThere, key);
    // An entry that is empty gives the full text, too, and says that it is there.
    if (!isThere || text == m_Texts->textManager().getText(m_StrUrl, key))
        return m_StrFull;
#ifdef TEXTMANAGER_HAS_MESSAGES
    if (!areArgumentsNumbered())
        return TextMessages::formatPattern(text, m_Arguments, key);
#endif
    return replacedArguments(text);
}

QString DeviceTextContent::missingText() const
{
    if (m_Texts->isNewlyMissing(m_StrUrl))
        qmlWarning(m_Label) << "No text found for url \"" << m_StrUrl << '"';
    return Texts::substituteFor(m_StrUrl);
}

bool DeviceTextContent::areArgumentsNumbered() const
{
    return Placeholders::findOtherName(m_Arguments).isNull();
}

QString DeviceTextContent::replacedArguments(const QString& text) const
{
    if (m_Arguments.isEmpty())
        return text;
    if (areArgumentsNumbered())
        return Placeholders::replace(text, m_Arguments, QLocale(m_Texts->language()));
    qmlWarning(m_Label) << "args: '" << Placeholders::findOtherName(m_Arguments)
                        << "' is no number from 1 to 99; other names need texts with arguments, "
                           "which this module was built without";
    return text;
}

void DeviceTextContent::fit()
{
    if (m_Label == nullptr)
        return;
    m_Label->setProperty("text", m_StrFull);
    if (!qFuzzyCompare(m_FullWidth, m_Label->implicitWidth())) {
        m_FullWidth = m_Label->implicitWidth();
        Q_EMIT fullWidthChanged();
    }
    m_StrShort = isWhole() ? m_StrFull : shortText();
    if (m_StrShort != m_StrFull) {
        m_TooSmall = m_Label->size();
        m_Label->setProperty("text", m_StrShort);
    }
    setIsShort(m_StrShort != m_StrFull);
}

void DeviceTextContent::fontChanged()
{
    m_TooSmall = QSizeF(0, 0);
    fitLater();
}

void DeviceTextContent::fitLater()
{
    // Not at once: where the size of the label hangs on its text, that would be a binding loop.
    if (m_IsFitPending)
        return;
    m_IsFitPending = true;
    QMetaObject::invokeMethod(this, &DeviceTextContent::fitAgain, Qt::QueuedConnection);
}

void DeviceTextContent::fitAgain()
{
    m_IsFitPending = false;
    if (m_Label == nullptr || m_Texts == nullptr)
        return;
    // A short text may have made the label narrower: the full one fits no better for that.
    const bool hasGrown =
        m_Label->width() > m_TooSmall.width() || m_Label->height() > m_TooSmall.height();
    if (m_IsShort ? hasGrown : !isWhole())
        fit();
}

/** Whether all that the label was given can be read. A label without a width has no layout yet. */
bool DeviceTextContent::isWhole() const
{
    const auto number = [this](const char* name) { return m_Label->property(name).toReal(); };
    if (m_Label->width() <= 0)
        return true;
    const qreal width = m_Label->width() - number("leftPadding") - number("rightPadding");
    const qreal height = m_Label->height() - number("topPadding") - number("bottomPadding");
    // One line may stick out at the top and bottom, where its letters do not reach.
    const bool isHighEnough = number("lineCount") < 2 || number("contentHeight") <= height;
    return !m_Label->property("truncated").toBool() && number("contentWidth") <= width &&
           isHighEnough;
}

void DeviceTextContent::setIsShort(bool isShort)
{
    if (isShort == m_IsShort)
        return;
    m_IsShort = isShort;
    Q_EMIT isShortChanged();
}
