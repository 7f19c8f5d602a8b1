#include "TextManagerQuick.h"

#include "DeviceTextContent.h"
#include "Texts.h"

#include <QDebug>
#include <QQmlEngine>

namespace
{

constexpr char module[] = "TextManager";

QObject* textsOf(QQmlEngine* engine, QJSEngine*)
{
    Texts* texts = Texts::of(*engine);
    if (texts == nullptr)
        qWarning() << "TextManagerQuick::install() was not called for this engine";
    return texts;
}

bool registerTypes()
{
    qmlRegisterSingletonType<Texts>(module, 1, 0, "Texts", textsOf);
    qmlRegisterType<DeviceTextContent>(module, 1, 0, "DeviceTextContent");
    qmlRegisterType(QUrl(QStringLiteral("qrc:/TextManager/DeviceText.qml")), module, 1, 0,
                    "DeviceText");
    return true;
}

} // namespace

void TextManagerQuick::install(QQmlEngine& engine, TextManagerBase& textManager)
{
    static const bool areTypesRegistered = registerTypes();
    Q_UNUSED(areTypesRegistered)
    if (Texts::of(engine) != nullptr) {
        qWarning() << "TextManagerQuick::install() was called before for this engine";
        return;
    }
    auto* texts = new Texts(engine, textManager);
    // Else it would go with the first garbage that is collected.
    QQmlEngine::setObjectOwnership(texts, QQmlEngine::CppOwnership);
}
