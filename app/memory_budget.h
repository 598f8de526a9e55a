#pragma once

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>
#include <QVariantMap>
#include <atomic>
#include <functional>
#include <memory>

#include "session/memory_estimate.h"
#include "session/tree_preview.h"

namespace tidewell {

/// "8.0 GB", "16 GB": units of 2^30 bytes, one digit after the point below 10; "13 MB", units of
/// 2^20 rounded up, where that would come to 0.1 at most; an em dash for 0.
QString formatBytes(quint64 bytes);

/// What the machine has, what a solve of the settings on screen would need, and what the last
/// result holds. The need is worked out in the background; a newer request stops an older one, and
/// so do a check before a start and the destructor.
class MemoryBudget : public QObject {
    Q_OBJECT

  public:
    explicit MemoryBudget(QObject* parent = nullptr);
    ~MemoryBudget() override;

    int threadCount() const { return threadCount_; }
    quint64 systemBytes() const { return systemBytes_; }
    quint64 availableBytes() const { return availableBytes_; }
    const QString& availableText() const { return availableText_; }

    /// Available, counting what a new solve gives back first; never more than there is.
    quint64 effectiveAvailableBytes() const;

    /// Of the last settings that were estimated or checked; 0 without an estimate. Of settings
    /// beyond all memory no more is known than that they need at least this.
    quint64 requiredBytes() const { return requiredBytes_; }
    const QString& requiredText() const { return requiredText_; }  ///< or "More than 24 GB"
    bool estimatePending() const { return pending_; }
    /// Why the settings cannot be estimated, and so not be solved; empty when they can.
    const QString& estimateError() const { return error_; }
    quint64 reclaimableBytes() const { return reclaimableBytes_; }
    /// What these settings will play; empty without an estimate. `streets` from the first one, each
    /// {street: "flop", lines, decisions}, of one board; `sizes`, each {street, seat: "OOP", raise,
    /// text, chips, percent, allIn}, what a size comes to on the first node where it can be
    /// wagered; `decisions` and `nodes` of all boards; `atLeast` and `linesAtLeast` where no more
    /// of them and of the lines were counted.
    const QVariantMap& played() const { return played_; }

    void requestEstimate(const QVariantMap& config);

    /// There are no settings that could be estimated.
    void forgetEstimate();

    /// Whether a solve fits.
    struct Fit {
        bool fits = false;
        QString reason;  ///< of one that does not: too little memory, or what is wrong with it
        bool tooLarge = false;
    };

    /// Works out whether a solve of `config` fits into what is available and what the last result
    /// gives back, without building its tree, and tells `answer` on this thread, after the call has
    /// returned. It then is the configuration that the requirement is told of, until an estimate
    /// that was asked for meanwhile is there. A newer check takes the place of an older one, whose
    /// answer is not told.
    void checkFit(const kestrel_app::SolveConfig& config, std::function<void(const Fit&)> answer);

    /// Ends what is being worked out, a check too; no answer is told.
    void stopEstimate();

    /// Reads the available memory anew.
    void refresh();

    /// The solve that was checked last begins, and the former result is given up.
    void beginSolve();

    /// The solve that has begun has ended well: its result holds what was estimated.
    void keepResult();

    /// The one call whose change the caller tells of, once the rest of the result is gone too.
    void clearResult();

    /// For tests: what the machine is taken to have.
    void setSystem(quint64 total, quint64 available);

  Q_SIGNALS:
    void systemChanged();
    void requiredChanged();  ///< also of `estimatePending` and `estimateError`

  private:
    struct Estimate {
        kestrel_app::SolveMemoryEstimate memory;
        kestrel_app::TreePreview preview;
        QString error;
    };

    /// Set once nobody waits for what is being worked out; null where nothing is.
    using Stop = std::shared_ptr<std::atomic<bool>>;

    void setAvailable(quint64 bytes);
    static void stop(Stop& work);
    void workOut(Stop MemoryBudget::*work, const kestrel_app::SolveConfig& config,
                 std::function<void()> then);
    void noteWork();
    void finishEstimate(const Estimate& estimate);
    Fit fitOfEstimate() const;

    int threadCount_;
    quint64 systemBytes_;
    quint64 availableBytes_ = 0;
    QString availableText_;
    quint64 requiredBytes_ = 0;
    QString requiredText_;
    bool pending_ = false;
    QString error_;
    QVariantMap played_;
    quint64 reclaimableBytes_ = 0;
    quint64 pendingBytes_ = 0;  // the estimate in force when the running solve began
    Stop estimate_;
    Stop check_;
    bool fixedForTests_ = false;
    QTimer timer_;
    QThreadPool pool_;
};

}  // namespace tidewell
