#pragma once

#include <QCoreApplication>
#include <QDebug>
#include <QDesktopServices>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <QVariantMap>
#include <new>

#include "app/files/project_file.h"
#include "app/files/text_files.h"
#include "app/memory_budget.h"
#include "app/play/play_source.h"
#include "app/results/distribution_jobs.h"
#include "app/results/hand_list_jobs.h"
#include "app/results/here_jobs.h"
#include "app/results/node_answers.h"
#include "app/results/node_lock_store.h"
#include "app/results/solve_results.h"
#include "app/results/solve_run.h"
#include "app/results/why_jobs.h"
#include "app/run_state.h"
#include "app/showdown.h"
#include "app/statistics.h"
#include "session/releaser.h"
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
    /// See MemoryBudget::played.
    Q_PROPERTY(QVariantMap solvePreview READ solvePreview NOTIFY solveRequiredMemoryChanged)
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
    /// How the solve that runs, or the last one, has gone.
    Q_PROPERTY(tidewell::SolveRun* run READ run CONSTANT)
    Q_PROPERTY(bool developerMode READ developerMode CONSTANT)
    /// Of a save or a load that takes a while, 0 to 1; -1 while there is none.
    Q_PROPERTY(double fileProgress READ fileProgress NOTIFY fileProgressChanged)
    /// While `running`: the solve has been told to stop, and does so as soon as it can.
    Q_PROPERTY(bool cancelling READ cancelling NOTIFY cancellingChanged)
    /// The locks are not those of the project's file, or of a project that nobody has touched.
    Q_PROPERTY(bool nodeLocksUnsaved READ nodeLocksUnsaved NOTIFY nodeLocksChanged)
    /// Why the last save failed; empty when it did not.
    Q_PROPERTY(QString saveError READ saveError NOTIFY saveErrorChanged)
    /// For a Trainer.
    Q_PROPERTY(QObject* playSource READ playSource CONSTANT)

  public:
    explicit AppController(QObject* parent = nullptr);
    ~AppController() override;

    static QString appDir() { return QCoreApplication::applicationDirPath(); }
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
    QVariantMap solvePreview() const { return memory_.played(); }
    bool running() const { return state_.running(); }
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
    tidewell::SolveRun* run() { return &run_; }
    bool developerMode() const { return developerMode_; }
    double fileProgress() const { return fileProgress_; }
    bool cancelling() const { return state_.stopping(); }
    bool nodeLocksUnsaved() const { return locks_.unsaved(); }
    QString saveError() const { return saveError_; }
    QObject* playSource() { return &playSource_; }

    // Solves.
    Q_INVOKABLE void startSolve() { startSolveWithConfig({}); }
    Q_INVOKABLE void startSolveWithConfig(const QVariantMap& cfg);
    Q_INVOKABLE void reSolveWithNodeLocks();
    Q_INVOKABLE void cancelSolve();
    Q_INVOKABLE void clearResults();
    Q_INVOKABLE void requestSolveMemoryEstimate(const QVariantMap& cfg) {
        memory_.requestEstimate(cfg);
    }
    Q_INVOKABLE void forgetSolveMemoryEstimate() { memory_.forgetEstimate(); }

    // Statistics. See Statistics.
    Q_INVOKABLE QVariantList solveActivityGridLastYear() {
        return statistics_.solveActivityGrid(tidewell::Statistics::daysOfYear);
    }
    Q_INVOKABLE QVariantList solveActivityGridLastSixMonths() {
        return statistics_.solveActivityGrid(tidewell::Statistics::daysOfSixMonths);
    }
    Q_INVOKABLE int solvesToday() { return statistics_.solvesToday(); }
    Q_INVOKABLE QString firstSolveDateIso() { return statistics_.firstSolveDateIso(); }
    Q_INVOKABLE QVariantList solveHistoryDaily() { return statistics_.solveHistoryDaily(); }
    Q_INVOKABLE void recordPlayVsSolutionHand(bool isMistake, double evLoss) {
        statistics_.recordPlayVsSolutionHand(isMistake, evLoss);
        Q_EMIT playVsSolutionStatsChanged();
    }
    Q_INVOKABLE QVariantMap playVsSolutionStats() { return statistics_.playVsSolutionStats(); }
    Q_INVOKABLE void clearPlayVsSolutionStats() {
        statistics_.clearPlayVsSolutionStats();
        Q_EMIT playVsSolutionStatsChanged();
    }

    // Files.
    Q_INVOKABLE void openLicensesFolder() {
        QDesktopServices::openUrl(QUrl::fromLocalFile(appDir() + "/licenses"));
    }
    Q_INVOKABLE void openThirdPartyNotices() {
        QDesktopServices::openUrl(
            QUrl::fromLocalFile(appDir() + "/licenses/THIRD_PARTY_NOTICES.txt"));
    }
    Q_INVOKABLE QString readTextResource(const QString& path) {
        return tidewell::readTextResource(path);
    }
    Q_INVOKABLE bool saveProject(const QUrl& fileUrl, const QVariantMap& projectState);
    Q_INVOKABLE QVariantMap loadProject(const QUrl& fileUrl);
    /// Whether a save to this file, now, would replace a result by none.
    Q_INVOKABLE bool saveLosesResult(const QUrl& fileUrl) const;
    Q_INVOKABLE QVariantMap saveTextFile(const QUrl& fileUrl, const QString& text) {
        return answer([&] { return tidewell::saveTextFile(fileUrl, text); });
    }
    Q_INVOKABLE QVariantMap readTextFile(const QUrl& fileUrl) {
        return answer([&] { return tidewell::readTextFile(fileUrl); });
    }

    // Locks. See NodeLockStore.
    Q_INVOKABLE void setNodeLock(int nodeIndex, const QString& handLabel169, int actionIndex,
                                 double actionProb);
    Q_INVOKABLE void setNodeLockProbs(int nodeIndex, const QString& handLabel169,
                                      const QVariantList& actionProbs);
    Q_INVOKABLE void clearNodeLocks(int nodeIndex) { locks_.clearNode(nodeIndex); }
    Q_INVOKABLE QVariantList nodeLocks(int nodeIndex) { return locks_.ofNode(nodeIndex); }

    // Questions about the result. See ResultTree, NodeAnswers and the jobs.
    Q_INVOKABLE int treeNodeCount() { return results_.tree.nodeCount(); }
    Q_INVOKABLE QVariantMap nodeMeta(int nodeIndex) {
        return answer([&] { return results_.tree.meta(nodeIndex); });
    }
    Q_INVOKABLE QVariantList nodeActions(int nodeIndex) {
        return answer([&] { return results_.tree.actions(nodeIndex); });
    }
    Q_INVOKABLE QVariantList nodeActionStats(int nodeIndex) {
        return answer([&] { return answers_.actionStats(nodeIndex); });
    }
    /// Of the hands that come to the node. Where `pending` is set, nodeActionStatsHereReady
    /// follows.
    Q_INVOKABLE QVariantList nodeActionStatsHere(int nodeIndex) {
        return answer([&] { return here_.request(nodeIndex); });
    }
    /// The same at once, with `pending` set where equity and EV are not known yet.
    Q_INVOKABLE QVariantList nodeActionSharesHere(int nodeIndex) {
        return answer([&] { return answers_.actionSharesHere(nodeIndex); });
    }
    Q_INVOKABLE bool nodeOpponentComes(int nodeIndex) {
        return !answer([&] { return !answers_.opponentComes(nodeIndex); });
    }
    Q_INVOKABLE QVariantList nodePocketActionEvs(int nodeIndex, const QString& player,
                                                 const QString& c1, const QString& c2) {
        return answer([&] { return answers_.pocketActionEvs(nodeIndex, player, c1, c2); });
    }
    Q_INVOKABLE QVariantMap showdownWinner(const QString& boardText, const QString& oopText,
                                           const QString& ipText) const {
        return tidewell::showdownWinner(boardText, oopText, ipText);
    }
    Q_INVOKABLE QVariantMap nodeHandStrategy(int nodeIndex) {
        return answer([&] { return answers_.handStrategy(nodeIndex); });
    }
    Q_INVOKABLE QVariantMap nodeHandStrategyReach169(int nodeIndex, const QString& bucketName) {
        return answer([&] { return answers_.handStrategyReach169(nodeIndex, bucketName); });
    }
    Q_INVOKABLE QVariantList nodeHandCombos(int nodeIndex) {
        return answer([&] { return answers_.handCombos(nodeIndex); });
    }
    /// `count` entries of nodeHandCombos from one on, or as many as there are. Of a list that has
    /// been prepared; otherwise empty.
    Q_INVOKABLE QVariantList nodeHandCombosPart(int nodeIndex, int first, int count) {
        return answer([&] { return answers_.handCombosPart(nodeIndex, first, count); });
    }
    /// Whether nodeHandCombos answers at once; where not, nodeHandCombosReady follows. See
    /// HandListJobs.
    Q_INVOKABLE bool prepareNodeHandCombos(int nodeIndex) {
        return !answer([&] { return !handLists_.request(nodeIndex); });
    }
    Q_INVOKABLE QVariantList nodeSeatHandCombos(int nodeIndex, const QString& player) {
        return answer([&] { return answers_.seatHandCombos(nodeIndex, player); });
    }
    Q_INVOKABLE QVariantList nodeHandBuckets(int nodeIndex) {
        return answer([&] { return answers_.handBuckets(nodeIndex); });
    }
    /// Where `pending` is set, nodeActionBreakdownReady follows. See WhyJobs.
    Q_INVOKABLE QVariantMap nodeActionBreakdown(int nodeIndex, const QString& c1, const QString& c2,
                                                int actionIndex) {
        return answer([&] { return why_.request(nodeIndex, c1, c2, actionIndex); });
    }
    Q_INVOKABLE void dropActionBreakdown() { why_.drop(); }
    Q_INVOKABLE QVariantMap nodeHandDistributions169(int nodeIndex) {
        return answer([&] { return distributions_.request(nodeIndex); });
    }
    Q_INVOKABLE void cancelHandDistributions169(int nodeIndex) { distributions_.cancel(nodeIndex); }

  Q_SIGNALS:
    void runningChanged();
    void progressChanged();
    void statusTextChanged();
    void resultsChanged();
    void handDistributions169Ready(int nodeIndex);
    void nodeHandCombosReady(int nodeIndex);
    void nodeActionStatsHereReady(int nodeIndex);
    void nodeActionBreakdownReady(int nodeIndex, const QString& c1, const QString& c2,
                                  int actionIndex);
    void solveStatsChanged();
    void playVsSolutionStatsChanged();
    void systemMemoryChanged();
    void solveRequiredMemoryChanged();
    void fileProgressChanged();
    void cancellingChanged();
    void saveErrorChanged();
    void nodeLocksChanged();

  private:
    bool take(tidewell::RunEvent event);
    void checkSolve(const QVariantMap& cfg, kestrel_app::SolveConfig config);
    void beginSolve(const QVariantMap& cfg, const kestrel_app::SolveConfig& config);
    void handleProgress(const kestrel_app::SolveProgress& report,
                        tidewell::SolveRun::Clock::time_point at);
    void endSolve(const kestrel_app::SolveProgress& report);
    void showResult(const kestrel_app::SolveResult& result);
    QString save(const QUrl& fileUrl, const QVariantMap& projectState);
    void showProject(tidewell::ProjectData data);
    void endFile();
    void dropResult();
    template <class Value>
    void set(Value& property, const Value& value, void (AppController::*changed)()) {
        if (value != property) {
            property = value;
            Q_EMIT(this->*changed)();
        }
    }
    void setProgress(double progress) { set(progress_, progress, &AppController::progressChanged); }
    void setStatusText(const QString& text) {
        set(statusText_, text, &AppController::statusTextChanged);
    }
    void setFileProgress(double progress) {
        set(fileProgress_, progress, &AppController::fileProgressChanged);
    }

    // No exception may pass through the event loop: without the memory for them, what a document
    // asks is not answered, and a solve ends.
    template <class Ask>
    auto answer(Ask ask) -> decltype(ask()) {
        try {
            return ask();
        } catch (const std::bad_alloc&) {
            qWarning("Not enough memory for an answer");
            return decltype(ask())();
        }
    }
    template <class Step>
    void attempt(Step step) {
        try {
            step();
        } catch (const std::bad_alloc&) {
            giveUpSolve();
        }
    }
    void giveUpSolve();

    kestrel_app::SolveSession session_;
    tidewell::SolveResults results_;
    tidewell::NodeAnswers answers_{session_};
    tidewell::HandListJobs handLists_{session_, answers_};
    tidewell::HereJobs here_{session_, answers_};
    tidewell::WhyJobs why_{session_};
    tidewell::DistributionJobs distributions_{session_};
    tidewell::PlaySource playSource_{session_, results_, answers_};
    tidewell::NodeLockStore locks_;
    tidewell::MemoryBudget memory_;
    tidewell::Statistics statistics_;
    tidewell::SolveRun run_;
    tidewell::RunState state_;
    QVariantMap lastSolveCfg_;  // of the result; without one, of the last solve that began
    double progress_ = 0;
    QString statusText_;
    bool developerMode_ = false;
    double fileProgress_ = -1;
    QString saveError_;
    kestrel_app::Releaser releaser_;
};
