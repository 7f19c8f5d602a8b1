#pragma once

#include <QMetaObject>
#include <QString>

#include <functional>
#include <memory>

class QObject;
class TextManagerBase;

/**
 * Hears of reloads in whatever thread they are made, and tells of them in the thread of the object
 * that listens: at once in that thread, and else from its event loop.
 *
 * The current language is asked for in the thread that reloads, since no other may do so while it
 * is replaced.
 */
class ReloadListener
{
public:
    using Reloaded = std::function<void(const QString& language)>;

    /**
     * @param textManager must outlive this object.
     * @param receiver the object in whose thread @p reloaded is called, which owns this one.
     */
    ReloadListener(const TextManagerBase& textManager, QObject& receiver, Reloaded reloaded);
    ~ReloadListener();
    Q_DISABLE_COPY_MOVE(ReloadListener)

private:
    struct Address;

    std::shared_ptr<Address> m_Address; ///< outlives this object where a reload is being made
    QMetaObject::Connection m_Connection;
};
