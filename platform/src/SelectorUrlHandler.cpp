#include "SelectorUrlHandler.h"

#include <QRegularExpression>

namespace
{

QRegularExpressionMatch parse(const QString& url)
{
    static const QString name = QStringLiteral("([A-Za-z_][A-Za-z0-9_]*)");
    static const QString parts = QStringLiteral("[^:/\\[\\]]+(?:/[^:/\\[\\]]+)*");
    static const QRegularExpression syntax(QRegularExpression::anchoredPattern(
        QStringLiteral("%1:%1:(%2):(%2(?:\\[[0-9]+\\])?)").arg(name, parts)));
    return syntax.match(url);
}

} // namespace

SelectorUrlHandler::SelectorUrlHandler(const QString& url)
{
    const QRegularExpressionMatch match = parse(url);
    m_StrModuleName = match.captured(1);
    m_StrObjectName = match.captured(2);
    m_StrInstance = match.captured(3);
    m_StrUrlIncludingIndex = match.captured(4);
}

SelectorUrlHandler::~SelectorUrlHandler() = default;

bool SelectorUrlHandler::isValid() const
{
    return !m_StrModuleName.isEmpty();
}

QString SelectorUrlHandler::getModuleName() const
{
    return m_StrModuleName;
}

QString SelectorUrlHandler::getObjectName() const
{
    return m_StrObjectName;
}

QString SelectorUrlHandler::getInstance() const
{
    return m_StrInstance;
}

QString SelectorUrlHandler::getUrlIncludingIndex() const
{
    return m_StrUrlIncludingIndex;
}
