#include "app/app_controller.h"

#include <QDebug>
#include <QScopeGuard>
#include <cmath>
#include <optional>
#include <system_error>
#include <utility>

#include "app/config_map.h"
#include "app/developer_mode.h"
#include "app/files/project_transfer.h"
#include "app/solve_log.h"

using kestrel_app::SolveProgress;
using kestrel_app::SolveResult;
using tidewell::Activity;
using tidewell::ProjectData;
using tidewell::RunEvent;

namespace {

bool isUnderLocks(const QVariantMap& cfg) {
    return cfg.value("apply_node_locks", false).toBool();
}

}  // namespace

AppController::AppController(QObject* parent)
    : QObject(parent),
      statusText_(QStringLiteral("—")),
      developerMode_(tidewell::developerModeRequested()) {
    connect(&memory_, &tidewell::MemoryBudget::systemChanged, this,
            &AppController::systemMemoryChanged);
    connect(&memory_, &tidewell::MemoryBudget::requiredChanged, this,
            &AppController::solveRequiredMemoryChanged);
    connect(&distributions_, &tidewell::DistributionJobs::ready, this,
            &AppController::handDistributions169Ready);
    connect(&handLists_, &tidewell::HandListJobs::ready, this, &AppController::nodeHandCombosReady);
    connect(&locks_, &tidewell::NodeLockStore::changed, this, &AppController::nodeLocksChanged);
    connect(&here_, &tidewell::HereJobs::ready, this, &AppController::nodeActionStatsHereReady);
    connect(&why_, &tidewell::WhyJobs::ready, this, &AppController::nodeActionBreakdownReady);
    setStatusText(tr("Ready"));
}

/// The session is the first member and so the last to go: it waits for its thread, which may still
/// post reports until then. They die with this object.
AppController::~AppController() {
    session_.cancel();
}

void AppController::startSolveWithConfig(const QVariantMap& cfg) {
    if (state_.now() != Activity::Idle) {
        return;
    }
    attempt([&] {
        setStatusText(tr("Starting..."));
        tidewell::logStart(cfg);
        run_.begin(cfg);
        const kestrel_app::ConfigMap map = tidewell::configMapOf(cfg);
        if (const auto reason = kestrel_app::not_ready_reason(map)) {
            if (!isUnderLocks(cfg)) {
                locks_.clear();  // whoever starts anew has done with them
            }
            setStatusText(tr(reason->c_str()));
            run_.end({});
            return;
        }
        checkSolve(cfg, kestrel_app::config_from_map(map));
    });
}

void AppController::checkSolve(const QVariantMap& cfg, kestrel_app::SolveConfig config) {
    if (isUnderLocks(cfg)) {
        config.node_locks = locks_.entries();
    }
    take(RunEvent::Start);
    memory_.checkFit(config, [this, cfg, config](const tidewell::MemoryBudget::Fit& fit) {
        attempt([&] {
            if (!fit.tooLarge) {
                beginSolve(cfg, config);  // which tells what else may be wrong with it
                return;
            }
            setStatusText(tr("Not enough RAM to solve (after clearing previous results)"));
            run_.end({});
            take(RunEvent::End);
        });
    });
}

/// The former result goes only now that the solve can begin.
void AppController::beginSolve(const QVariantMap& cfg, const kestrel_app::SolveConfig& config) {
    take(RunEvent::Fits);
    lastSolveCfg_ = cfg;
    if (!isUnderLocks(cfg)) {
        locks_.clear();
    }
    dropResult();
    memory_.beginSolve();
    Q_EMIT resultsChanged();
    Q_EMIT systemMemoryChanged();
    run_.start();
    const auto post = [this](const SolveProgress& report) {
        const auto at = tidewell::SolveRun::Clock::now();
        QMetaObject::invokeMethod(
            this, [this, report, at] { handleProgress(report, at); }, Qt::QueuedConnection);
    };
    try {
        if (!session_.start(config, post)) {
            setStatusText(tr("Already running"));
            run_.end({});
            take(RunEvent::End);
        }
    } catch (const std::system_error& error) {  // no thread to be had
        endSolve(tidewell::reportOf(error));
    }
}

void AppController::handleProgress(const SolveProgress& report,
                                   tidewell::SolveRun::Clock::time_point at) {
    if (report.result) {
        attempt([&] {
            tidewell::logProgress(report);
            endSolve(report);
        });
        return;
    }
    answer([&] {
        tidewell::logProgress(report);
        if (state_.now() == Activity::Solving) {
            run_.follow(report, at);
            setProgress(report.fraction);
            setStatusText(tidewell::statusOf(report));
        }
    });
}

/// With the last report of a solve.
void AppController::endSolve(const SolveProgress& report) {
    dropResult();
    if (state_.now() == Activity::Discarding) {
        session_.clearResults();
        run_.end({});
        setStatusText(tr("Ready"));
    } else {
        setProgress(report.fraction);
        setStatusText(tidewell::statusOf(report));
        showResult(*report.result);
    }
    take(RunEvent::End);
}

void AppController::showResult(const SolveResult& result) {
    results_ = tidewell::resultsOf(result);
    run_.end(results_);
    if (result.ok) {
        statistics_.recordSolve(results_.iterations, results_.exploitability,
                                std::llround(1000 * run_.seconds()), results_.startingPot);
        Q_EMIT solveStatsChanged();
        memory_.keepResult();
    }
    tidewell::logResult(results_);
    Q_EMIT resultsChanged();
    qInfo("UI emitted resultsChanged");
}

/// There is no memory for the next step of a solve that does not run.
void AppController::giveUpSolve() {
    bool told = false;
    answer([&] {
        const SolveProgress report = tidewell::reportOf(std::bad_alloc());
        if (state_.now() == Activity::Idle || state_.now() == Activity::Checking) {
            setStatusText(tidewell::statusOf(report));  // the former result stands
            run_.end({});
        } else {
            session_.clearResults();
            endSolve(report);
            told = true;
        }
    });
    if (!told) {
        take(RunEvent::End);
    }
}

void AppController::reSolveWithNodeLocks() {
    if (running()) {
        return;
    }
    if (lastSolveCfg_.isEmpty()) {
        setStatusText(tr("No previous solve config (solve once first)"));
        return;
    }
    QVariantMap cfg = lastSolveCfg_;
    cfg.insert("apply_node_locks", true);
    startSolveWithConfig(cfg);
}

void AppController::cancelSolve() {
    if (state_.now() == Activity::Checking) {
        memory_.stopEstimate();
        setStatusText(QStringLiteral("Cancelled"));
        run_.end({});
    } else {
        session_.cancel();
        setStatusText(tr("Cancelling..."));
    }
    take(RunEvent::Cancel);
}

void AppController::clearResults() {
    if (state_.now() == Activity::Checking) {
        memory_.stopEstimate();
        run_.end({});
    }
    session_.cancel();
    session_.clearResults();
    dropResult();
    locks_.clear();
    locks_.markSaved();
    lastSolveCfg_.clear();
    memory_.clearResult();
    take(RunEvent::Discard);
    run_.forget();
    setProgress(0);
    setStatusText(running() ? tr("Cancelling...") : tr("Ready"));
    Q_EMIT resultsChanged();
    Q_EMIT systemMemoryChanged();
}

bool AppController::saveProject(const QUrl& fileUrl, const QVariantMap& projectState) {
    QString error = tr("Not enough memory to save");
    answer([&] { error = save(fileUrl, projectState); });
    if (error.isEmpty()) {
        locks_.markSaved();
    }
    set(saveError_, error, &AppController::saveErrorChanged);
    return error.isEmpty();
}

bool AppController::saveLosesResult(const QUrl& fileUrl) const {
    return !results_.any() && fileUrl.isLocalFile() &&
           tidewell::holdsResults(fileUrl.toLocalFile());
}

/// Why it was not saved, or nothing.
QString AppController::save(const QUrl& fileUrl, const QVariantMap& projectState) {
    if (!fileUrl.isValid() || !fileUrl.isLocalFile()) {
        qWarning().noquote() << "saveProject: invalid/non-local URL:" << fileUrl.toString();
        return tr("Invalid/non-local file URL");
    }
    const QString path = fileUrl.toLocalFile();
    if (path.isEmpty()) {
        return tr("Empty file path");
    }
    tidewell::ProjectData data;
    data.project = projectState;
    data.lastUiCfg = lastSolveCfg_;
    data.nodeLocks = locks_.all();
    if (running()) {
        return results_.any() || tidewell::holdsResults(path)
                   ? tr("A solve is running, and a save would lose the results that are there. "
                        "Save when it has ended, or under another name.")
                   : tidewell::saveProjectFile(path, std::move(data), nullptr, nullptr);
    }
    if (!take(RunEvent::BeginFile)) {
        return tr("Another file is being read or written");
    }
    const auto end = qScopeGuard([this] { endFile(); });
    data.hasResults = results_.any();
    data.results = results_;
    data.records = answers_.records();
    const auto solve = session_.finished();
    std::optional<kestrel_app::NodeRecord> root;  // stays empty where memory ran out
    std::function<void(ProjectData&)> askTheRoot;
    if (solve && !answers_.isKept(0)) {
        // It can always be looked at again, also if no page has asked for it yet.
        askTheRoot = [&](ProjectData& project) {
            root = kestrel_app::work_out(*solve, 0);
            tidewell::NodeAnswers answers(session_);
            answers.restore(std::move(project.records));
            answers.keep(0, *root);
            project.records = answers.records();
        };
    }
    const QString error = tidewell::saveProjectFile(
        path, std::move(data), askTheRoot, [this](double progress) { setFileProgress(progress); });
    if (root && solve == session_.finished()) {
        answers_.keep(0, *root);
    }
    return error;
}

QVariantMap AppController::loadProject(const QUrl& fileUrl) {
    QVariantMap answer = {
        {"ok", false}, {"error", ""}, {"project", QVariantMap()}, {"hasResults", false}};
    if (!take(RunEvent::BeginFile)) {
        answer["error"] =
            running() ? tr("A solve is running") : tr("Another file is being read or written");
        return answer;
    }
    const auto end = qScopeGuard([this] { endFile(); });
    tidewell::ReadProject read =
        tidewell::loadProjectFile(fileUrl, [this](double progress) { setFileProgress(progress); });
    answer["ok"] = read.error.isEmpty();
    answer["error"] = read.error;
    if (read.error.isEmpty()) {
        answer["project"] = read.data.project;
        answer["hasResults"] = read.data.hasResults;
        showProject(std::move(read.data));
    }
    return answer;
}

void AppController::showProject(ProjectData data) {
    session_.clearResults();
    dropResult();
    results_ = std::move(data.results);
    run_.forget();
    setProgress(0);
    using kestrel_app::NodeRecord;
    setStatusText(tr("Loaded project (%1 strategy nodes, %2 combo nodes)")
                      .arg(kestrel_app::nodes_with(data.records, &NodeRecord::strategy))
                      .arg(kestrel_app::nodes_with(data.records, &NodeRecord::combos)));
    answers_.restore(std::move(data.records));
    locks_.clear();
    locks_.restore(data.nodeLocks, [this](int node) { return results_.tree.actionCount(node); });
    locks_.markSaved();
    lastSolveCfg_ = data.lastUiCfg;
    Q_EMIT resultsChanged();
}

void AppController::endFile() {
    take(RunEvent::EndFile);
    setFileProgress(-1);
}

void AppController::setNodeLock(int nodeIndex, const QString& handLabel169, int actionIndex,
                                double actionProb) {
    answer([&] {
        locks_.setAction(
            nodeIndex, handLabel169, actionIndex, actionProb, results_.tree.actionCount(nodeIndex),
            [&] { return session_.hand_strategy(static_cast<std::uint64_t>(nodeIndex)); });
    });
}

void AppController::setNodeLockProbs(int nodeIndex, const QString& handLabel169,
                                     const QVariantList& actionProbs) {
    locks_.setProbs(nodeIndex, handLabel169, actionProbs, results_.tree.actionCount(nodeIndex));
}

bool AppController::take(RunEvent event) {
    const tidewell::RunState before = state_;
    if (!state_.take(event)) {
        return false;
    }
    if (before.stopping() != state_.stopping()) {
        Q_EMIT cancellingChanged();
    }
    if (before.running() != state_.running()) {
        Q_EMIT runningChanged();
    }
    return true;
}

/// All that is shown of the last result; signals are the caller's.
void AppController::dropResult() {
    releaser_.release(std::pair(std::exchange(results_, {}), answers_.records()));
    answers_.clear();
    handLists_.clear();
    here_.clear();
    why_.drop();
    distributions_.clear();
    playSource_.clear();
}
