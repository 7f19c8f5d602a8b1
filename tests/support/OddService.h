#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QThread>
#include <QVariantList>

/**
 * The device's service, on a connection named "odd" and in a thread of its own. It has its name at
 * once, and its object from answer() on.
 */
class OddService : public QDBusVirtualObject
{
public:
    OddService();
    ~OddService() override;

    /** Answers every call with @p values. */
    void answer(const QVariantList& values);

    QString introspect(const QString&) const override { return QString(); }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private:
    QVariantList m_Answer;
    QDBusConnection m_Bus;
    QThread m_Thread;
};
