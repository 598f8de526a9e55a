#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>
#include <atomic>
#include <chrono>
#include <functional>
#include <optional>

#include "app/memory_budget.h"
#include "app/results/distribution_jobs.h"
#include "app/results/node_answers.h"
#include "app/results/node_lock_store.h"
#include "app/results/solve_results.h"
#include "app/statistics.h"
#include "session/solve_session.h"

/// The one object through which the user interface reaches the engine: runs solves, mirrors their
/// progress in properties, keeps the last result, and forwards to the objects that answer
/// questions about it. Money in chips. Everything happens on the thread of the event loop; nothing
/// throws, and what cannot be answered is empty.
class AppController : public QObject {
    Q_OBJECT

    Q_PROPERTY(QString appDir READ appDir CONSTANT)
    Q_PROPERTY(int systemThreadCount READ systemThreadCount CONSTANT)
    Q_PROPERTY(QString systemMemoryText READ systemMemoryText CONSTANT)
    Q_PROPERTY(
        QString systemAvailableMemoryText READ systemAvailableMemoryText NOTIFY systemMemoryChanged)
    Q_PROPERTY(quint64 systemMemoryBytes READ systemMemoryBytes CONSTANT)
    Q_PROPERTY(quint64 systemAvailableMemoryBytes READ systemAvailableMemoryBytes NOTIFY
                   systemMemoryChanged)
    Q_PROPERTY(QString effectiveAvailableMemoryText READ effectiveAvailableMemoryText NOTIFY
                   systemMemoryChanged)
    Q_PROPERTY(quint64 effectiveAvailableMemoryBytes READ effectiveAvailableMemoryBytes NOTIFY
                   systemMemoryChanged)
    Q_PROPERTY(QString solveRequiredMemoryText READ solveRequiredMemoryText NOTIFY
                   solveRequiredMemoryChanged)
    Q_PROPERTY(quint64 solveRequiredMemoryBytes READ solveRequiredMemoryBytes NOTIFY
                   solveRequiredMemoryChanged)
    /// While the requirement is worked out, and why it cannot be; empty when it can.
    Q_PROPERTY(
        bool solveEstimatePending READ solveEstimatePending NOTIFY solveRequiredMemoryChanged)
    Q_PROPERTY(QString solveEstimateError READ solveEstimateError NOTIFY solveRequiredMemoryChanged)
    Q_PROPERTY(bool running READ running NOTIFY runningChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)
    Q_PROPERTY(QString resultsSummary READ resultsSummary NOTIFY resultsChanged)
    Q_PROPERTY(double resultStartingPot READ resultStartingPot NOTIFY resultsChanged)
    Q_PROPERTY(int resultIterations READ resultIterations NOTIFY resultsChanged)
    Q_PROPERTY(double resultExploitability READ resultExploitability NOTIFY resultsChanged)
    Q_PROPERTY(double resultEvOop READ resultEvOop NOTIFY resultsChanged)
    Q_PROPERTY(double resultEvIp READ resultEvIp NOTIFY resultsChanged)
    Q_PROPERTY(QVariantList rootActions READ rootActions NOTIFY resultsChanged)
    /// What `startSolveWithConfig` was given for the results on screen; empty where nobody knows.
    Q_PROPERTY(QVariantMap solvedConfig READ solvedConfig NOTIFY resultsChanged)
    Q_PROPERTY(quint64 resultsReclaimableMemoryBytes READ resultsReclaimableMemoryBytes NOTIFY
                   resultsChanged)
    Q_PROPERTY(bool developerMode READ developerMode CONSTANT)
    /// Of a save or a load that takes a while, 0 to 1; -1 while there is none.
    Q_PROPERTY(double fileProgress READ fileProgress NOTIFY fileProgressChanged)

  public:
    explicit AppController(QObject* parent = nullptr);
    ~AppController() override;

    static QString appDir();
    int systemThreadCount() const { return memory_.threadCount(); }
    QString systemMemoryText() const { return tidewell::formatBytes(memory_.systemBytes()); }
    QString systemAvailableMemoryText() const { return memory_.availableText(); }
    quint64 systemMemoryBytes() const { return memory_.systemBytes(); }
    quint64 systemAvailableMemoryBytes() const { return memory_.availableBytes(); }
    QString effectiveAvailableMemoryText() const {
        return tidewell::formatBytes(memory_.effectiveAvailableBytes());
    }
    quint64 effectiveAvailableMemoryBytes() const { return memory_.effectiveAvailableBytes(); }
    QString solveRequiredMemoryText() const { return memory_.requiredText(); }
    quint64 solveRequiredMemoryBytes() const { return memory_.requiredBytes(); }
    bool solveEstimatePending() const { return memory_.estimatePending(); }
    QString solveEstimateError() const { return memory_.estimateError(); }
    bool running() const { return running_; }
    double progress() const { return progress_; }
    QString statusText() const { return statusText_; }
    QString resultsSummary() const { return results_.summary; }
    QVariantMap solvedConfig() const { return lastSolveCfg_; }
    double resultStartingPot() const { return results_.startingPot; }
    int resultIterations() const { return results_.iterations; }
    double resultExploitability() const { return results_.exploitability; }
    double resultEvOop() const { return results_.evOop; }
    double resultEvIp() const { return results_.evIp; }
    QVariantList rootActions() const { return results_.rootActions; }
    quint64 resultsReclaimableMemoryBytes() const { return memory_.reclaimableBytes(); }
    bool developerMode() const { return developerMode_; }
    double fileProgress() const { return fileProgress_; }

    // Solves.
    Q_INVOKABLE void startSolve();
    Q_INVOKABLE void startSolveWithConfig(const QVariantMap& cfg);
    Q_INVOKABLE void reSolveWithNodeLocks();
    Q_INVOKABLE void cancelSolve();
    Q_INVOKABLE void clearResults();
    Q_INVOKABLE void requestSolveMemoryEstimate(const QVariantMap& cfg);

    // Statistics. See Statistics.
    Q_INVOKABLE QVariantList solveActivityGridLastYear();
    Q_INVOKABLE QVariantList solveActivityGridLastSixMonths();
    Q_INVOKABLE int solvesToday();
    Q_INVOKABLE QString firstSolveDateIso();
    Q_INVOKABLE QVariantList solveHistoryDaily();
    Q_INVOKABLE void recordPlayVsSolutionHand(bool isMistake, double evLoss);
    Q_INVOKABLE QVariantMap playVsSolutionStats();
    Q_INVOKABLE void clearPlayVsSolutionStats();

    // Files.
    Q_INVOKABLE void openLicensesFolder();
    Q_INVOKABLE void openThirdPartyNotices();
    Q_INVOKABLE QString readTextResource(const QString& path);
    Q_INVOKABLE bool saveProject(const QUrl& fileUrl, const QVariantMap& projectState);
    Q_INVOKABLE QVariantMap loadProject(const QUrl& fileUrl);
    Q_INVOKABLE QVariantMap saveTextFile(const QUrl& fileUrl, const QString& text);
    Q_INVOKABLE QVariantMap readTextFile(const QUrl& fileUrl);

    // Locks. See NodeLockStore.
    Q_INVOKABLE void setNodeLock(int nodeIndex, const QString& handLabel169, int actionIndex,
                                 double actionProb);
    Q_INVOKABLE void setNodeLockProbs(int nodeIndex, const QString& handLabel169,
                                      const QVariantList& actionProbs);
    Q_INVOKABLE void clearNodeLocks(int nodeIndex);
    Q_INVOKABLE QVariantList nodeLocks(int nodeIndex);

    // Questions about the result. See ResultTree, NodeAnswers and DistributionJobs.
    Q_INVOKABLE int treeNodeCount();
    Q_INVOKABLE QVariantMap nodeMeta(int nodeIndex);
    Q_INVOKABLE QVariantList nodeActions(int nodeIndex);
    Q_INVOKABLE QVariantList nodeActionStats(int nodeIndex);
    Q_INVOKABLE QVariantList nodePocketActionEvs(int nodeIndex, const QString& player,
                                                 const QString& c1, const QString& c2);
    Q_INVOKABLE QVariantMap showdownWinner(const QString& boardText, const QString& oopText,
                                           const QString& ipText) const;
    Q_INVOKABLE QVariantMap nodeHandStrategy(int nodeIndex);
    Q_INVOKABLE QVariantMap nodeHandStrategyReach169(int nodeIndex, const QString& bucketName);
    Q_INVOKABLE QVariantList nodeHandCombos(int nodeIndex);
    Q_INVOKABLE QVariantList nodeSeatHandCombos(int nodeIndex, const QString& player);
    Q_INVOKABLE QVariantList nodeHandBuckets(int nodeIndex);
    Q_INVOKABLE QVariantMap nodeHandDistributions169(int nodeIndex);

  Q_SIGNALS:
    void runningChanged();
    void progressChanged();
    void statusTextChanged();
    void resultsChanged();
    void handDistributions169Ready(int nodeIndex);
    void solveStatsChanged();
    void playVsSolutionStatsChanged();
    void systemMemoryChanged();
    void solveRequiredMemoryChanged();
    void fileProgressChanged();

  private:
    void handleProgress(quint64 solve, const kestrel_app::SolveProgress& report);
    void handleResult(const kestrel_app::SolveResult& result);
    void endSolve();
    void setRunning(bool running);
    void setProgress(double progress);
    void setStatusText(const QString& text);
    void setFileProgress(double progress);
    /// What can be asked of the last result, and the result itself; signals are the caller's.
    void dropAnswers();
    void dropResult();
    void restoreLocks(const QVariantList& locks);
    /// Runs a save or a load beside the event loop. False when it failed for want of memory.
    bool besideEvents(const std::function<void(std::atomic<double>&)>& work);

    kestrel_app::SolveSession session_;
    tidewell::SolveResults results_;
    tidewell::NodeAnswers answers_{session_};
    tidewell::DistributionJobs distributions_{session_};
    tidewell::NodeLockStore locks_;
    tidewell::MemoryBudget memory_;
    tidewell::Statistics statistics_;
    QVariantMap lastSolveCfg_;
    bool running_ = false;
    double progress_ = 0;
    QString statusText_;
    bool developerMode_ = false;
    double fileProgress_ = -1;
    bool fileBusy_ = false;      // events are handled beside a save or a load
    quint64 solve_ = 0;          // number of the last solve or load; earlier reports are void
    bool solveDropped_ = false;  // its result has been given up while it ran
    std::optional<std::chrono::steady_clock::time_point> solveStart_;
};
