#include "ReloadListener.h"

#include <TextManagerBase.h>

#include <QMutex>
#include <QObject>
#include <QThread>

#include <utility>

struct ReloadListener::Address {
    QMutex mutex;
    QObject* receiver = nullptr; ///< guarded; null: nobody listens any more
    Reloaded reloaded;

    void tell(const QString& language)
    {
        QMutexLocker locker(&mutex);
        if (receiver == nullptr)
            return;
        if (receiver->thread() != QThread::currentThread()) {
            const auto call = [reloadedThere = reloaded, language] { reloadedThere(language); };
            QMetaObject::invokeMethod(receiver, call, Qt::QueuedConnection);
            return;
        }
        // In its own thread the receiver stays; what it does may lead to the next reload.
        locker.unlock();
        reloaded(language);
    }
};

ReloadListener::ReloadListener(const TextManagerBase& textManager, QObject& receiver,
                               Reloaded reloaded)
    : m_Address(std::make_shared<Address>())
{
    m_Address->receiver = &receiver;
    m_Address->reloaded = std::move(reloaded);
    m_Connection = QObject::connect(
        &textManager, &TextManagerBase::languageReloaded,
        [address = m_Address, &textManager] { address->tell(textManager.getLanguageName()); });
}

ReloadListener::~ReloadListener()
{
    QObject::disconnect(m_Connection);
    const QMutexLocker locker(&m_Address->mutex);
    m_Address->receiver = nullptr;
}
