#pragma once

#include <QObject>
#include <QPointer>
#include <qqml.h>
#include <QQuickItem>
#include <QSizeF>
#include <QString>
#include <QVariantMap>

class Texts;

/**
 * What a DeviceText shows: chooses between the full and the short text at a URL, and fills in its
 * arguments. It is an object of its own since a Text of Qt Quick cannot be derived from in C++.
 */
class DeviceTextContent : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    /** The Text that shows it; set once. */
    Q_PROPERTY(QQuickItem* label MEMBER m_Label)
    Q_PROPERTY(QString url READ url WRITE setUrl NOTIFY urlChanged)
    Q_PROPERTY(QVariantMap args READ args WRITE setArgs NOTIFY argsChanged)
    /** Whether the short text is shown. */
    Q_PROPERTY(bool isShort READ isShort NOTIFY isShortChanged)
    /** The implicit width of the label with the full text. */
    Q_PROPERTY(qreal fullWidth READ fullWidth NOTIFY fullWidthChanged)

public:
    using QObject::QObject;

    /** Begins to show and to follow; before, nothing is looked up. To be called when the label is
     * complete, so that what it makes of a text can be measured. */
    Q_INVOKABLE void start();

    QString url() const { return m_StrUrl; }
    void setUrl(const QString& url);
    QVariantMap args() const { return m_Arguments; }
    void setArgs(const QVariantMap& arguments);
    bool isShort() const { return m_IsShort; }
    qreal fullWidth() const { return m_FullWidth; }

Q_SIGNALS:
    void urlChanged();
    void argsChanged();
    void isShortChanged();
    void fullWidthChanged();

private Q_SLOTS:
    void fontChanged();

private:
    void update();
    QString fullText() const;
    QString shortText() const;
    QString missingText() const;
    QString replacedArguments(const QString& text) const;
    bool areArgumentsNumbered() const;

    void fit();
    void fitLater();
    void fitAgain();
    bool isWhole() const;
    void setIsShort(bool isShort);

    QPointer<QQuickItem> m_Label;
    QPointer<Texts> m_Texts; ///< null before the start
    QString m_StrUrl;
    QVariantMap m_Arguments;
    QString m_StrFull;
    QString m_StrShort; ///< looked up only where the full text does not fit
    bool m_IsShort = false;
    qreal m_FullWidth = 0;
    QSizeF m_TooSmall; ///< the size of the label in which the full text did not fit
    bool m_IsFitPending = false;
};
