#include "TextFunction.h"

#include "Texts.h"

#include <TextManagerBase.h>

#include <QMessageLogger>
#include <QQmlEngine>
#include <QRegularExpression>

namespace
{

/** A line of the QML or JavaScript that runs. */
struct Place {
    QByteArray file;
    int line = 0;
};

/** Where the function was called: the topmost line of the stack that is in a file. */
Place callingPlace(QQmlEngine& engine)
{
    static const QRegularExpression frame(QStringLiteral("^[^@]*@(.+):(-?[0-9]+)$"),
                                          QRegularExpression::MultilineOption);
    const QString stack = engine.evaluate(QStringLiteral("new Error().stack")).toString();
    const QRegularExpressionMatch match = frame.match(stack);
    return {match.captured(1).toUtf8(), match.captured(2).toInt()};
}

} // namespace

TextFunction::TextFunction(Texts& texts, QQmlEngine& engine)
    : m_Texts(texts)
    , m_Engine(engine)
{
}

QJSValue TextFunction::makeFor(Texts& texts, QQmlEngine& engine)
{
    // Without a parent it goes with the last function that holds it. The function is one of
    // JavaScript since Qt 5.15 keeps, until the engine goes, some memory for each binding that
    // returns straight what a method returned.
    const QJSValue holder = engine.newQObject(new TextFunction(texts, engine));
    QJSValue makeFunction = engine.evaluate(
        QStringLiteral("(function(holder) {"
                       "    return function(url) { const text = holder.textAt(url); return text }"
                       "})"));
    return makeFunction.call({holder});
}

QString TextFunction::textAt(const QString& textUrl) const
{
    bool isThere = false;
    const QString text =
        m_Texts.textManager().getText(textUrl, isThere, m_Texts.lookUpKey(), false);
    if (!text.isEmpty() || isThere || textUrl.isEmpty())
        return text;
    if (m_Texts.isNewlyMissing(textUrl))
        report(textUrl);
    return Texts::substituteFor(textUrl);
}

void TextFunction::report(const QString& textUrl) const
{
    const Place place = callingPlace(m_Engine);
    QMessageLogger(place.file.constData(), place.line, "text").warning().noquote().nospace()
        << place.file << ':' << place.line << ": No text found for url \"" << textUrl << '"';
}
