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
#ifdef __SANITIZE_THREAD__
    kilobytes *= 4; // the frames of its own run time are not what is measured
#endif
    thread->setStackSize(kilobytes * 1024);
    thread->start();
    done.get_future().wait();
    thread->wait();
}
