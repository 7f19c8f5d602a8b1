#include "Resources.h"

#include <QThread>

#include <future>
#include <memory>

#include <sys/resource.h>

int peakMegabytes()
{
    rusage usage;
    return getrusage(RUSAGE_SELF, &usage) == 0 ? int(usage.ru_maxrss / 1024) : 0;
}

void runOnSmallStack(const std::function<void()>& work, uint kilobytes)
{
    std::promise<void> done; // the thread sanitizer knows it, but not the thread's own wait()
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        work();
        done.set_value();
    }));
    thread->setStackSize(kilobytes * 1024);
    thread->start();
    done.get_future().wait();
    thread->wait();
}
