#include "app/memory_budget.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "app/config_map.h"
#include "app/system_info.h"
#include "session/memory_estimate.h"

namespace tidewell {
namespace {

constexpr int refreshMilliseconds = 2000;

quint64 estimate(const kestrel_app::SolveConfig& config) {
    try {
        return kestrel_app::estimate_solve_memory(config).total_bytes;
    } catch (const std::exception&) {
        return 0;  // the page's own checks tell what is wrong with the settings
    }
}

}  // namespace

QString formatBytes(quint64 bytes) {
    if (bytes == 0) {
        return QStringLiteral("—");
    }
    const double gigabytes = static_cast<double>(bytes) / (1 << 30);
    return QStringLiteral("%1 GB").arg(gigabytes, 0, 'f', gigabytes < 10 ? 1 : 0);
}

MemoryBudget::MemoryBudget(QObject* parent)
    : QObject(parent),
      threadCount_(logicalProcessorCount()),
      systemBytes_(totalMemoryBytes()),
      availableText_(formatBytes(0)),
      requiredText_(formatBytes(0)) {
    pool_.setMaxThreadCount(1);
    connect(&timer_, &QTimer::timeout, this, &MemoryBudget::refresh);
    timer_.start(refreshMilliseconds);
    refresh();
}

MemoryBudget::~MemoryBudget() {
    pool_.clear();
    pool_.waitForDone();
}

quint64 MemoryBudget::effectiveAvailableBytes() const {
    constexpr quint64 most = std::numeric_limits<quint64>::max();
    const quint64 sum =
        reclaimableBytes_ > most - availableBytes_ ? most : availableBytes_ + reclaimableBytes_;
    return systemBytes_ == 0 ? sum : std::min(sum, systemBytes_);
}

void MemoryBudget::requestEstimate(const QVariantMap& config) {
    pool_.clear();  // what has not begun is out of date
    pool_.start([this, generation = ++generation_,
                 settings = kestrel_app::config_from_map(configMapOf(config))] {
        const quint64 bytes = estimate(settings);
        QMetaObject::invokeMethod(
            this, [this, generation, bytes] { finishEstimate(generation, bytes); },
            Qt::QueuedConnection);
    });
}

void MemoryBudget::finishEstimate(quint64 generation, quint64 bytes) {
    if (generation != generation_ || bytes == requiredBytes_) {
        return;
    }
    requiredBytes_ = bytes;
    requiredText_ = formatBytes(bytes);
    Q_EMIT requiredChanged();
}

void MemoryBudget::refresh() {
    if (!fixedForTests_) {
        setAvailable(availableMemoryBytes());
    }
}

void MemoryBudget::setAvailable(quint64 bytes) {
    const QString text = formatBytes(bytes);
    if (bytes != availableBytes_ || text != availableText_) {
        availableBytes_ = bytes;
        availableText_ = text;
        Q_EMIT systemChanged();
    }
}

bool MemoryBudget::beginSolve() {
    refresh();
    pendingBytes_ = requiredBytes_;
    return requiredBytes_ == 0 || availableBytes_ == 0 || availableBytes_ > requiredBytes_;
}

void MemoryBudget::keepResult() {
    reclaimableBytes_ = pendingBytes_;
    Q_EMIT systemChanged();
}

void MemoryBudget::clearResult() {
    reclaimableBytes_ = 0;
    pendingBytes_ = 0;
}

void MemoryBudget::setSystem(quint64 total, quint64 available) {
    fixedForTests_ = true;
    systemBytes_ = total;
    setAvailable(available);
}

}  // namespace tidewell
