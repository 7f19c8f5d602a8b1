#include "DynamicTextHandler.h"

#include "DynamicTextReaderInterface.h"
#include "TranslateableTextHelper.h"

#include <QDebug>

DynamicTextHandler::DynamicTextHandler(QObject* parent)
    : QObject(parent)
{
}

DynamicTextHandler::~DynamicTextHandler() = default;

void DynamicTextHandler::setInterface(DynamicTextReaderInterface* readerInterface)
{
    m_Interface = readerInterface;
}

QString DynamicTextHandler::getText(const QString& url, const QString& language) const
{
    if (m_Interface == nullptr) {
        qWarning() << "Invalid pointer to dynamic text handler interface! Unable to read text for "
                      "url"
                   << url << "(" << language << ")!";
        return QString();
    }
    const QVariant value = m_Interface->readDynamicValue(url);
    if (!value.isValid()) {
        qWarning() << "Unable to read value for url" << url << "!";
        return QString();
    }
    // Without a parent: the caller's thread need not be the one that this handler lives in.
    TranslateableTextHelper helper(language, nullptr);
    helper.setTranslateableTextObject(value);
    return helper.currentText();
}
