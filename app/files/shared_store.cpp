#include "app/files/shared_store.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <chrono>
#include <thread>

namespace tidewell {
namespace {

/// Changes take milliseconds; who has the lock for longer has been stopped in the middle of one.
constexpr std::chrono::seconds patience(5);
constexpr std::chrono::milliseconds pause(5);  // QLockFile itself would wait for 100 ms and more

/// Not the name that QSettings itself locks while it writes.
QString lockPath(const QSettings& settings) {
    const QFileInfo store(settings.fileName());
    QDir().mkpath(store.path());
    return store.path() + "/." + store.fileName() + ".change.lock";
}

bool acquire(QLockFile& lock) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!lock.tryLock(0)) {
        if (lock.error() != QLockFile::LockFailedError || std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(pause);
    }
    return true;
}

}  // namespace

void changeStore(const std::function<void(QSettings&)>& change) {
    QSettings settings;
    QLockFile lock(lockPath(settings));
    // The lock of a process that lives is never stale: it is only waited for.
    lock.setStaleLockTime(0);
    if (!acquire(lock)) {
        qWarning().noquote() << "Settings are changed without a lock:" << lock.error();
    }
    settings.sync();
    change(settings);
    settings.sync();
}

}  // namespace tidewell
