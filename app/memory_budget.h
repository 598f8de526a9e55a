#pragma once

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>
#include <QVariantMap>

namespace tidewell {

/// "8.0 GB", "16 GB": units of 2^30 bytes, one digit after the point below 10; an em dash for 0.
QString formatBytes(quint64 bytes);

/// What the machine has, what a solve of the settings on screen would need, and what the last
/// result holds. The need is worked out in the background, by building cards and tree; of several
/// requests only the newest counts. The destructor waits for a request that runs.
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

    quint64 requiredBytes() const { return requiredBytes_; }  ///< 0 without an estimate
    const QString& requiredText() const { return requiredText_; }
    quint64 reclaimableBytes() const { return reclaimableBytes_; }

    void requestEstimate(const QVariantMap& config);

    /// Reads the available memory anew.
    void refresh();

    /// The former result has been given up, and a solve of the settings on screen begins. False
    /// when it cannot fit.
    bool beginSolve();

    /// The solve that was begun has ended well: its result holds what was estimated.
    void keepResult();

    /// The one call whose change the caller tells of, once the rest of the result is gone too.
    void clearResult();

    /// For tests: what the machine is taken to have.
    void setSystem(quint64 total, quint64 available);

  Q_SIGNALS:
    void systemChanged();
    void requiredChanged();

  private:
    void setAvailable(quint64 bytes);
    void finishEstimate(quint64 generation, quint64 bytes);

    int threadCount_;
    quint64 systemBytes_;
    quint64 availableBytes_ = 0;
    QString availableText_;
    quint64 requiredBytes_ = 0;
    QString requiredText_;
    quint64 reclaimableBytes_ = 0;
    quint64 pendingBytes_ = 0;  // the estimate in force when the running solve began
    quint64 generation_ = 0;    // of the newest request
    bool fixedForTests_ = false;
    QTimer timer_;
    QThreadPool pool_;
};

}  // namespace tidewell
