#include "app/background.h"

#include <QEventLoop>
#include <QTimer>
#include <exception>
#include <system_error>
#include <thread>

namespace tidewell {

void runBeside(const std::function<void(std::atomic<double>&)>& work,
               const std::function<void(double)>& onProgress) {
    constexpr int tickMilliseconds = 100;
    std::atomic<double> progress = 0;
    std::exception_ptr failure;
    QEventLoop loop;
    QTimer ticks;
    if (onProgress) {
        QObject::connect(&ticks, &QTimer::timeout, &loop, [&] { onProgress(progress); });
        ticks.start(tickMilliseconds);
    }
    std::thread worker;
    try {
        worker = std::thread([&] {
            try {
                work(progress);
            } catch (...) {
                failure = std::current_exception();
            }
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
    } catch (const std::system_error&) {  // no thread to be had
        work(progress);
        return;
    }
    // Ends early when the program is told to quit; the work is waited for all the same.
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    worker.join();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

}  // namespace tidewell
