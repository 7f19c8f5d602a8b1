// A language, arguments as JavaScript has them (in JSON, those named date... as dates), and a text:
// shown by a label.

#include "FuzzSupport.h"

#include "MessagePatternInfo.h"
#include "TextManagerBase.h"
#include "TextManagerQuick.h"
#include "TextMessages.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

namespace
{

class Manager : public TextManagerBase
{
public:
    Manager()
        : TextManagerBase(QString(), "de_DE", QString())
    {
    }
    /** Puts @p text, and in the short texts @p shortText, at the URL T. */
    void setTexts(const QString& text, const QString& shortText)
    {
        m_LanguageMap["POSIX"] = documentOf(text);
        m_ShortLanguageMap["POSIX"] = documentOf(shortText);
    }

private:
    static QJsonObject documentOf(const QString& text)
    {
        return {{"Content", QJsonObject{{"T", QJsonObject{{"text", text}}}}}};
    }
};

class Screen
{
public:
    Screen()
    {
        TextManagerQuick::install(m_Engine, m_Manager);
        QQmlComponent component(&m_Engine);
        component.setData("import QtQuick 2.15\n"
                          "import TextManager 1.0\n"
                          "DeviceText {\n"
                          "    width: 60\n"
                          "    function show(language, json) {\n"
                          "        Texts.chosenLanguage = language\n"
                          "        url = ''\n"
                          "        args = JSON.parse(json, (key, value) =>\n"
                          "            key.startsWith('date') ? new Date(value) : value) || {}\n"
                          "        url = 'T'\n"
                          "    }\n"
                          "}",
                          QUrl());
        m_pLabel.reset(component.create());
        require(m_pLabel != nullptr, qPrintable(component.errorString()));
    }

    void show(const QString& language, const QString& arguments, const QString& text)
    {
        m_Manager.setTexts(text, text.left(3));
        QMetaObject::invokeMethod(m_pLabel.get(), "show", Q_ARG(QVariant, language),
                                  Q_ARG(QVariant, arguments));
        QCoreApplication::processEvents();
        m_Engine.collectGarbage();
    }

private:
    Manager m_Manager;
    QQmlEngine m_Engine;
    std::unique_ptr<QObject> m_pLabel;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int argumentCount = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static QGuiApplication application(argumentCount, arguments);
    static Screen& screen = *new Screen; // it ends with the process
    FuzzInput input(data, size);
    const QString language = input.takeText();
    const QString json = input.takeText();
    const QString text = QString::fromUtf8(input.rest());
    screen.show(language, json, text);

    const MessagePatternInfo info(text);
    require(info.isValid() == info.getError().isEmpty(), "an error for what is not valid");
    require(info.getErrorOffset() <= text.size(), "a place in the text");
    require(info.isValid() || TextMessages::formatPattern(text, {}, language) == text,
            "a malformed text as it stands");
    return 0;
}
