#pragma once

#include "TextManagerQuickExport.h"

class QQmlEngine;
class TextManagerBase;

/**
 * Brings the texts of a text manager into Qt Quick, as the QML module `TextManager 1.0`:
 *
 *     import TextManager 1.0
 *
 *     Label { text: Texts.text("Menu/Save") }
 *     DeviceText { url: "Alarms/Filter/Dirty" }
 *
 * What is bound to them follows the language and each reload. docs/quick.md describes the module.
 *
 * **Threads.** The module works in the thread of the engine. Reloads may come from any other: the
 * labels follow once the engine's thread has returned to its event loop. The language that is
 * current is asked for in the thread that reloads, so it may be replaced there, as TextManager does
 * it.
 */
class TEXTMANAGERQUICK_EXPORT TextManagerQuick
{
public:
    TextManagerQuick() = delete;

    /**
     * Makes @p textManager the one of @p engine, once for each engine, in its thread and before it
     * loads QML. A second call for an engine is a warning and changes nothing. While it runs, no
     * other thread may replace the current language.
     *
     * @param engine owns what is made for it.
     * @param textManager stays the caller's and must outlive the engine.
     */
    static void install(QQmlEngine& engine, TextManagerBase& textManager);
};
