#include "app/app_controller.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDesktopServices>
#include <QFileInfo>
#include <exception>
#include <new>
#include <thread>

#include "app/background.h"
#include "app/config_map.h"
#include "app/developer_mode.h"
#include "app/files/project_file.h"
#include "app/files/text_files.h"
#include "app/showdown.h"

using kestrel_app::SolveProgress;
using kestrel_app::SolveResult;
using tidewell::ProjectData;

namespace {

/// Files and trees above these are handled beside the event loop, the others at once.
constexpr qint64 smallFileBytes = 1 << 20;
constexpr int smallTreeNodes = 2000;

void logStart(const QVariantMap& cfg) {
    const auto value = [&](const char* key) { return cfg.value(key).toString(); };
    const auto length = [&](const char* key) { return QString::number(value(key).size()); };
    const std::pair<const char*, QString> parts[] = {
        {"board=", value("board")},
        {"oop_range.len=", length("oop_range")},
        {"ip_range.len=", length("ip_range")},
        {"pot=", value("starting_pot")},
        {"stack=", value("effective_stack")},
        {"rake%=", value("rake_percent")},
        {"rake_cap=", value("rake_cap")},
        {"iters=", value("max_iterations")},
        {"target_expl=", value("target_exploitability")},
        {"oop_flop_bets=", value("oop_flop_bet_sizes")},
        {"oop_flop_raises=", value("oop_flop_raise_sizes")},
        {"ip_flop_bets=", value("ip_flop_bet_sizes")},
        {"ip_flop_raises=", value("ip_flop_raise_sizes")},
        {"oop_jam_thr_en=", value("oop_add_all_in_jam_threshold_enabled")},
        {"oop_jam_thr_pct=", value("oop_add_all_in_jam_threshold_pct")},
        {"ip_jam_thr_en=", value("ip_add_all_in_jam_threshold_enabled")},
        {"ip_jam_thr_pct=", value("ip_add_all_in_jam_threshold_pct")}};
    QString line = QStringLiteral("UI startSolveWithConfig:");
    for (const auto& [name, text] : parts) {
        line += ' ' + QString(name) + text;
    }
    qInfo().noquote() << line;
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
    setStatusText(tr("Ready"));
}

/// The session is the first member and so the last to go: it waits for its thread, which may still
/// post reports until then. They die with this object.
AppController::~AppController() {
    session_.cancel();
}

QString AppController::appDir() {
    return QCoreApplication::applicationDirPath();
}

void AppController::startSolve() {
    startSolveWithConfig({});
}

void AppController::startSolveWithConfig(const QVariantMap& cfg) {
    if (running_ || fileBusy_) {
        return;
    }
    setStatusText(tr("Starting..."));
    logStart(cfg);
    lastSolveCfg_ = cfg;
    const bool withLocks = cfg.value("apply_node_locks", false).toBool();
    if (!withLocks) {
        locks_.clear();
    }
    const kestrel_app::ConfigMap map = tidewell::configMapOf(cfg);
    kestrel_app::SolveConfig config = kestrel_app::config_from_map(map);
    if (withLocks) {
        config.node_locks = locks_.entries();
    }
    if (const auto reason = kestrel_app::not_ready_reason(map)) {
        setStatusText(tr(reason->c_str()));
        return;
    }
    session_.clearResults();
    dropResult();
    memory_.clearResult();
    Q_EMIT resultsChanged();
    Q_EMIT systemMemoryChanged();
    if (!memory_.beginSolve()) {
        setStatusText(tr("Not enough RAM to solve (after clearing previous results)"));
        return;
    }
    solveStart_ = std::chrono::steady_clock::now();
    setRunning(true);
    const quint64 solve = solve_ + 1;
    const auto post = [this, solve](const SolveProgress& report) {
        QMetaObject::invokeMethod(
            this, [this, solve, report] { handleProgress(solve, report); }, Qt::QueuedConnection);
    };
    try {
        if (session_.start(config, post)) {
            solve_ = solve;
            solveDropped_ = false;
        } else {
            setStatusText(tr("Already running"));
        }
    } catch (const std::exception& error) {  // no thread to be had
        SolveProgress report;
        report.status = std::string("Error: ") + error.what();
        report.result = SolveResult{};
        report.result->error = error.what();
        solve_ = solve;
        solveDropped_ = false;
        handleProgress(solve, report);
    }
}

void AppController::handleProgress(quint64 solve, const SolveProgress& report) {
    const QString status = QString::fromStdString(report.status);
    qInfo().noquote() << "UI solve progress: p=" + QString::number(report.fraction) +
                             " status=" + status +
                             " has_result=" + (report.result ? "true" : "false");
    if (solve != solve_) {
        return;  // of a solve before the one that runs
    }
    if (solveDropped_) {
        // Nobody asks for its result any more; but a start may have been refused meanwhile.
        if (report.result) {
            session_.clearResults();
            dropAnswers();
            if (running_) {
                setStatusText(QStringLiteral("Cancelled"));
                endSolve();
            }
        }
        return;
    }
    setProgress(report.fraction);
    setStatusText(status);
    if (report.result) {
        handleResult(*report.result);
        endSolve();
    }
}

void AppController::handleResult(const SolveResult& result) {
    dropResult();
    if (result.ok) {
        results_ = tidewell::resultsOf(result);
        const auto elapsed = std::chrono::steady_clock::now() -
                             solveStart_.value_or(std::chrono::steady_clock::now());
        statistics_.recordSolve(
            results_.iterations, results_.exploitability,
            std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count());
        Q_EMIT solveStatsChanged();
        memory_.keepResult();
    } else {
        results_.summary = tr("Solve failed: %1").arg(QString::fromStdString(result.error));
    }
    qInfo().noquote() << "UI about to emit resultsChanged: root_actions=" +
                             QString::number(results_.rootActions.size()) +
                             " summary.len=" + QString::number(results_.summary.size());
    Q_EMIT resultsChanged();
    qInfo("UI emitted resultsChanged");
}

/// The last solve has told its last and is a step from its end; afterwards the next one can start.
void AppController::endSolve() {
    while (session_.isRunning()) {
        std::this_thread::yield();
    }
    setRunning(false);
}

void AppController::reSolveWithNodeLocks() {
    if (running_) {
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
    session_.cancel();
    setStatusText(tr("Cancelling..."));
}

void AppController::clearResults() {
    session_.cancel();
    session_.clearResults();
    solveDropped_ = true;
    dropResult();
    locks_.clear();
    lastSolveCfg_.clear();
    memory_.clearResult();
    setProgress(0);
    setStatusText(tr("Ready"));
    setRunning(false);
    Q_EMIT resultsChanged();
    Q_EMIT systemMemoryChanged();
}

void AppController::requestSolveMemoryEstimate(const QVariantMap& cfg) {
    memory_.requestEstimate(cfg);
}

QVariantList AppController::solveActivityGridLastYear() {
    return statistics_.solveActivityGrid(tidewell::Statistics::daysOfYear);
}

QVariantList AppController::solveActivityGridLastSixMonths() {
    return statistics_.solveActivityGrid(tidewell::Statistics::daysOfSixMonths);
}

int AppController::solvesToday() {
    return statistics_.solvesToday();
}

QString AppController::firstSolveDateIso() {
    return statistics_.firstSolveDateIso();
}

QVariantList AppController::solveHistoryDaily() {
    return statistics_.solveHistoryDaily();
}

void AppController::recordPlayVsSolutionHand(bool isMistake, double evLoss) {
    statistics_.recordPlayVsSolutionHand(isMistake, evLoss);
    Q_EMIT playVsSolutionStatsChanged();
}

QVariantMap AppController::playVsSolutionStats() {
    return statistics_.playVsSolutionStats();
}

void AppController::clearPlayVsSolutionStats() {
    statistics_.clearPlayVsSolutionStats();
    Q_EMIT playVsSolutionStatsChanged();
}

void AppController::openLicensesFolder() {
    QDesktopServices::openUrl(QUrl::fromLocalFile(appDir() + "/licenses"));
}

void AppController::openThirdPartyNotices() {
    QDesktopServices::openUrl(QUrl::fromLocalFile(appDir() + "/licenses/THIRD_PARTY_NOTICES.txt"));
}

QString AppController::readTextResource(const QString& path) {
    return tidewell::readTextResource(path);
}

bool AppController::saveProject(const QUrl& fileUrl, const QVariantMap& projectState) {
    if (!fileUrl.isValid() || !fileUrl.isLocalFile()) {
        qWarning().noquote() << "saveProject: invalid/non-local URL:" << fileUrl.toString();
        return false;
    }
    const QString path = fileUrl.toLocalFile();
    if (path.isEmpty()) {
        return false;
    }
    if (fileBusy_) {
        qWarning("saveProject: another file is being read or written");
        return false;
    }
    ProjectData data;
    data.project = projectState;
    data.hasResults = results_.any();
    if (data.hasResults && results_.tree.nodeCount() > 0) {
        // The root can always be looked at again, also if no page has asked for it yet.
        answers_.keep(0);
    }
    data.results = results_;
    data.records = answers_.records();
    data.nodeLocks = locks_.all();
    data.lastUiCfg = lastSolveCfg_;
    QString error;
    if (results_.tree.nodeCount() <= smallTreeNodes) {
        error = tidewell::writeProject(path, data, nullptr);
    } else if (!besideEvents([&](std::atomic<double>& progress) {
                   error = tidewell::writeProject(path, data, &progress);
               })) {
        return false;
    }
    if (!error.isEmpty()) {
        qWarning().noquote() << "saveProject: " + error;
        return false;
    }
    qInfo().noquote() << "Saved project:" << path;
    return true;
}

QVariantMap AppController::loadProject(const QUrl& fileUrl) {
    QVariantMap answer = {
        {"ok", false}, {"error", ""}, {"project", QVariantMap()}, {"hasResults", false}};
    const auto refuse = [&](const QString& error) {
        answer.insert("error", error);
        return answer;
    };
    if (!fileUrl.isValid() || !fileUrl.isLocalFile()) {
        return refuse(tr("Invalid/non-local file URL"));
    }
    const QString path = fileUrl.toLocalFile();
    if (path.isEmpty()) {
        return refuse(tr("Empty file path"));
    }
    if (running_ || session_.isRunning()) {
        return refuse(tr("A solve is running"));
    }
    if (fileBusy_) {
        return refuse(tr("Another file is being read or written"));
    }
    tidewell::ReadProject read;
    if (QFileInfo(path).size() <= smallFileBytes) {
        read = tidewell::readProject(path, nullptr);
    } else if (!besideEvents([&](std::atomic<double>& progress) {
                   read = tidewell::readProject(path, &progress);
               })) {
        return refuse(tr("Not enough memory to read the file"));
    }
    if (!read.error.isEmpty()) {
        if (!read.damage.isEmpty()) {
            qWarning().noquote() << "loadProject:" << path << read.damage;
        }
        return refuse(tr(read.error.toUtf8().constData()));
    }

    ProjectData& data = read.data;
    session_.clearResults();
    ++solve_;  // the last report of a solve before may still come
    dropAnswers();
    locks_.clear();
    results_ = std::move(data.results);
    using kestrel_app::NodeRecord;
    const auto strategies = kestrel_app::nodes_with(data.records, &NodeRecord::strategy);
    const auto combos = kestrel_app::nodes_with(data.records, &NodeRecord::combos);
    answers_.restore(std::move(data.records));
    restoreLocks(data.nodeLocks);
    lastSolveCfg_ = data.lastUiCfg;
    setRunning(false);
    setProgress(0);
    setStatusText(
        tr("Loaded project (%1 strategy nodes, %2 combo nodes)").arg(strategies).arg(combos));
    Q_EMIT resultsChanged();
    answer.insert("ok", true);
    answer.insert("project", data.project);
    answer.insert("hasResults", data.hasResults);
    qInfo().noquote() << "Loaded project:" << path
                      << "hasResults=" + QString(data.hasResults ? "true" : "false");
    return answer;
}

bool AppController::besideEvents(const std::function<void(std::atomic<double>&)>& work) {
    fileBusy_ = true;
    bool ended = true;
    try {
        tidewell::runBeside(work, [this](double progress) { setFileProgress(progress); });
    } catch (const std::bad_alloc&) {
        qWarning("Not enough memory to read or write the file");
        ended = false;
    }
    fileBusy_ = false;
    setFileProgress(-1);
    return ended;
}

void AppController::restoreLocks(const QVariantList& locks) {
    for (const QVariant& entry : locks) {
        const QVariantMap lock = entry.toMap();
        const int node = lock.value("nodeIndex", -1).toInt();
        const QString hand = lock.value("hand").toString();
        if (node < 0 || hand.isEmpty()) {
            continue;
        }
        if (lock.contains("actionProbs")) {
            const QVariantList probs = lock.value("actionProbs").toList();
            if (!probs.isEmpty()) {
                setNodeLockProbs(node, hand, probs);
            }
            continue;
        }
        const int action = lock.value("actionIndex", -1).toInt();
        if (action >= 0) {
            setNodeLock(node, hand, action, lock.value("actionProb", 1.0).toDouble());
        }
    }
}

QVariantMap AppController::saveTextFile(const QUrl& fileUrl, const QString& text) {
    return tidewell::saveTextFile(fileUrl, text);
}

QVariantMap AppController::readTextFile(const QUrl& fileUrl) {
    return tidewell::readTextFile(fileUrl);
}

void AppController::setNodeLock(int nodeIndex, const QString& handLabel169, int actionIndex,
                                double actionProb) {
    locks_.setAction(nodeIndex, handLabel169, actionIndex, actionProb,
                     results_.tree.actionCount(nodeIndex),
                     [&] { return session_.hand_strategy(static_cast<std::uint64_t>(nodeIndex)); });
}

void AppController::setNodeLockProbs(int nodeIndex, const QString& handLabel169,
                                     const QVariantList& actionProbs) {
    locks_.setProbs(nodeIndex, handLabel169, actionProbs, results_.tree.actionCount(nodeIndex));
}

void AppController::clearNodeLocks(int nodeIndex) {
    locks_.clearNode(nodeIndex);
}

QVariantList AppController::nodeLocks(int nodeIndex) {
    return locks_.ofNode(nodeIndex);
}

int AppController::treeNodeCount() {
    return results_.tree.nodeCount();
}

QVariantMap AppController::nodeMeta(int nodeIndex) {
    return results_.tree.meta(nodeIndex);
}

QVariantList AppController::nodeActions(int nodeIndex) {
    return results_.tree.actions(nodeIndex);
}

QVariantList AppController::nodeActionStats(int nodeIndex) {
    return answers_.actionStats(nodeIndex);
}

QVariantList AppController::nodePocketActionEvs(int nodeIndex, const QString& player,
                                                const QString& c1, const QString& c2) {
    return answers_.pocketActionEvs(nodeIndex, player, c1, c2);
}

QVariantMap AppController::showdownWinner(const QString& boardText, const QString& oopText,
                                          const QString& ipText) const {
    return tidewell::showdownWinner(boardText, oopText, ipText);
}

QVariantMap AppController::nodeHandStrategy(int nodeIndex) {
    return answers_.handStrategy(nodeIndex);
}

QVariantMap AppController::nodeHandStrategyReach169(int nodeIndex, const QString& bucketName) {
    return answers_.handStrategyReach169(nodeIndex, bucketName);
}

QVariantList AppController::nodeHandCombos(int nodeIndex) {
    return answers_.handCombos(nodeIndex);
}

QVariantList AppController::nodeSeatHandCombos(int nodeIndex, const QString& player) {
    return answers_.seatHandCombos(nodeIndex, player);
}

QVariantList AppController::nodeHandBuckets(int nodeIndex) {
    return answers_.handBuckets(nodeIndex);
}

QVariantMap AppController::nodeHandDistributions169(int nodeIndex) {
    return distributions_.request(nodeIndex);
}

void AppController::setRunning(bool running) {
    if (running != running_) {
        running_ = running;
        Q_EMIT runningChanged();
    }
}

void AppController::setProgress(double progress) {
    if (progress != progress_) {
        progress_ = progress;
        Q_EMIT progressChanged();
    }
}

void AppController::setStatusText(const QString& text) {
    if (text != statusText_) {
        statusText_ = text;
        Q_EMIT statusTextChanged();
    }
}

void AppController::setFileProgress(double progress) {
    if (progress != fileProgress_) {
        fileProgress_ = progress;
        Q_EMIT fileProgressChanged();
    }
}

void AppController::dropAnswers() {
    answers_.clear();
    distributions_.clear();
}

void AppController::dropResult() {
    dropAnswers();
    results_ = {};
}
