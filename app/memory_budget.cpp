#include "app/memory_budget.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <new>
#include <utility>

#include "app/config_map.h"
#include "app/system_info.h"

namespace tidewell {
namespace {

constexpr int refreshMilliseconds = 2000;

QString streetName(kestrel::Street street) {
    return street == kestrel::Street::Flop   ? QStringLiteral("flop")
           : street == kestrel::Street::Turn ? QStringLiteral("turn")
                                             : QStringLiteral("river");
}

QVariantMap playedOf(const kestrel_app::SolveMemoryEstimate& memory,
                     const kestrel_app::TreePreview& preview) {
    QVariantList streets;
    for (const kestrel_app::StreetLines& street : preview.streets) {
        streets.push_back(QVariantMap{{"street", streetName(street.street)},
                                      {"lines", static_cast<double>(street.lines)},
                                      {"decisions", static_cast<double>(street.decisions)}});
    }
    QVariantList sizes;
    for (const kestrel_app::PlayedSizes& list : preview.sizes) {
        for (const kestrel_app::PlayedSize& size : list.sizes) {
            sizes.push_back(QVariantMap{{"street", streetName(list.street)},
                                        {"seat", list.seat == kestrel::Seat::OOP ? "OOP" : "IP"},
                                        {"raise", list.raises},
                                        {"text", QString::fromStdString(size.text)},
                                        {"chips", size.amount / 100.0},
                                        {"percent", size.percent},
                                        {"allIn", size.all_in}});
        }
    }
    return {{"streets", streets},
            {"sizes", sizes},
            {"decisions", static_cast<double>(memory.decision_node_count)},
            {"nodes", static_cast<double>(memory.node_count)},
            {"atLeast", memory.at_least},
            {"linesAtLeast", preview.at_least}};
}

}  // namespace

QString formatBytes(quint64 bytes) {
    if (bytes == 0) {
        return QStringLiteral("—");
    }
    constexpr quint64 megabyte = quint64{1} << 20;
    constexpr quint64 leastInGigabytes =
        103 * megabyte;  // below, one digit would say little or 0.0
    if (bytes < leastInGigabytes) {
        return QStringLiteral("%1 MB").arg((bytes + megabyte - 1) / megabyte);
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
    stop(estimate_);
    stop(check_);
    pool_.waitForDone();
}

quint64 MemoryBudget::effectiveAvailableBytes() const {
    constexpr quint64 most = std::numeric_limits<quint64>::max();
    const quint64 sum =
        reclaimableBytes_ > most - availableBytes_ ? most : availableBytes_ + reclaimableBytes_;
    return systemBytes_ == 0 ? sum : std::min(sum, systemBytes_);
}

void MemoryBudget::requestEstimate(const QVariantMap& config) {
    stop(estimate_);
    workOut(&MemoryBudget::estimate_, kestrel_app::config_from_map(configMapOf(config)), [] {});
}

void MemoryBudget::checkFit(const kestrel_app::SolveConfig& config,
                            std::function<void(const Fit&)> answer) {
    stop(estimate_);
    stop(check_);
    workOut(&MemoryBudget::check_, config, [this, answer = std::move(answer)] {
        refresh();
        answer(fitOfEstimate());
    });
}

void MemoryBudget::stopEstimate() {
    stop(estimate_);
    stop(check_);
    noteWork();
}

void MemoryBudget::forgetEstimate() {
    stop(estimate_);
    if (check_ == nullptr) {
        finishEstimate({});
    }
}

void MemoryBudget::stop(Stop& work) {
    if (work != nullptr) {
        *work = true;
        work = nullptr;
    }
}

void MemoryBudget::noteWork() {
    const bool pending = estimate_ != nullptr || check_ != nullptr;
    if (pending != pending_) {
        pending_ = pending;
        Q_EMIT requiredChanged();
    }
}

/// One after the other, so that a check is not held up by an estimate that comes later. Only what
/// nobody has stopped is taken over.
void MemoryBudget::workOut(Stop MemoryBudget::*work, const kestrel_app::SolveConfig& config,
                           std::function<void()> then) {
    this->*work = std::make_shared<std::atomic<bool>>(false);
    noteWork();
    pool_.start(
        [this, work, config, then = std::move(then), stop = this->*work, limit = systemBytes_] {
            Estimate estimate;
            try {
                kestrel_app::EstimateLimits limits;
                limits.stop = stop.get();
                if (limit != 0) {
                    limits.budget_bytes = limit;
                }
                estimate.memory = kestrel_app::estimate_solve_memory(config, limits);
                estimate.preview = kestrel_app::preview_tree(config, stop.get());
            } catch (const kestrel::BuildStopped&) {
                return;
            } catch (const std::bad_alloc&) {  // not even the memory to count it
                estimate.memory.total_bytes = std::max<quint64>(limit, 1);
                estimate.memory.at_least = true;
            } catch (const std::exception& failure) {
                estimate.error = QString::fromUtf8(failure.what());
            }
            QMetaObject::invokeMethod(
                this,
                [this, work, estimate, then, stop] {
                    if (stop == this->*work) {
                        this->*work = nullptr;
                        finishEstimate(estimate);
                        then();
                    }
                },
                Qt::QueuedConnection);
        });
}

void MemoryBudget::finishEstimate(const Estimate& estimate) {
    pending_ = estimate_ != nullptr || check_ != nullptr;
    error_ = estimate.error;
    requiredBytes_ = estimate.memory.total_bytes;
    requiredText_ = estimate.memory.at_least ? tr("More than %1").arg(formatBytes(systemBytes_))
                                             : formatBytes(requiredBytes_);
    played_ = error_.isEmpty() && requiredBytes_ != 0 ? playedOf(estimate.memory, estimate.preview)
                                                      : QVariantMap();
    Q_EMIT requiredChanged();
}

MemoryBudget::Fit MemoryBudget::fitOfEstimate() const {
    if (!error_.isEmpty()) {
        return {.fits = false, .reason = error_};
    }
    if (availableBytes_ == 0 || effectiveAvailableBytes() > requiredBytes_) {
        return {.fits = true, .reason = {}};
    }
    return {.fits = false,
            .reason = tr("Not enough RAM to solve: %1 needed, %2 available")
                          .arg(requiredText_, formatBytes(effectiveAvailableBytes())),
            .tooLarge = true};
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

void MemoryBudget::beginSolve() {
    reclaimableBytes_ = 0;
    pendingBytes_ = requiredBytes_;
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
