#include "app/system_info.h"

#include <QThread>
#include <limits>
#include <thread>

#include "platform/memory_info.h"
#include "platform/processors.h"

namespace tidewell {
namespace {

constexpr int largestCount = std::numeric_limits<int>::max();

}  // namespace

int chooseProcessorCount(qint64 reported, int ideal, unsigned hardware) {
    qint64 count = reported;
    if (count < 1 || count > largestCount) {
        count = ideal;
    }
    if (count < 1) {
        count = hardware;
    }
    return count < 2 || count > largestCount ? 1 : static_cast<int>(count);
}

int logicalProcessorCount() {
    return chooseProcessorCount(tidewell_platform::permitted_processors(),
                                QThread::idealThreadCount(), std::thread::hardware_concurrency());
}

quint64 totalMemoryBytes() {
    return tidewell_platform::total_memory().value_or(0);
}

quint64 availableMemoryBytes() {
    return tidewell_platform::available_memory().value_or(0);
}

}  // namespace tidewell
