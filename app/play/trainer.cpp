#include "app/play/trainer.h"

#include <QDateTime>
#include <QSettings>
#include <limits>
#include <string_view>
#include <vector>

#include "app/play/play_source.h"

namespace tidewell {
namespace {

using kestrel::Seat;
using kestrel_app::SolveActionInfo;
using kestrel_app::SolveNodeMeta;

const QString ownHandKey = QStringLiteral("trainer/opponentPlaysOwnHand");

constexpr int nextDrillDelayMs = 450;
constexpr int verdictMs = 700;

QString textOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

Seat seatOf(const QString& name) {
    return name == QStringLiteral("IP") ? Seat::IP : Seat::OOP;
}

double chips(std::int32_t hundredths) {
    return hundredths / kestrel_app::hundredths_per_chip;
}

/// What is known of a node; nothing for an index out of range.
struct NodeView {
    SolveNodeMeta meta;
    std::vector<SolveActionInfo> actions;

    NodeView(const PlaySource* source, int node) {
        const auto* const tree = source != nullptr ? source->tree() : nullptr;
        if (tree != nullptr && node >= 0 && static_cast<std::size_t>(node) < tree->size()) {
            meta = tree->node(static_cast<std::size_t>(node));
            actions = tree->actions(static_cast<std::size_t>(node));
            known = true;
        }
    }

    bool isDecision() const { return meta.node_type == "decision" && !actions.empty(); }
    bool isChance() const { return meta.node_type == "chance"; }
    bool isTerminal() const { return meta.node_type == "terminal"; }
    QString player() const { return textOf(meta.player); }
    QString nameOf(std::size_t action) const { return textOf(actions[action].name); }

    bool known = false;
};

}  // namespace

Trainer::Trainer(QObject* parent)
    : QObject(parent), opponentPlaysOwnHand_(QSettings().value(ownHandKey, false).toBool()) {
    for (QTimer* const timer : {&step_, &nextDrill_, &verdictEnd_}) {
        timer->setSingleShot(true);
    }
    connect(&step_, &QTimer::timeout, this, &Trainer::tick);
    connect(&nextDrill_, &QTimer::timeout, this, &Trainer::nextDrillHand);
    connect(&verdictEnd_, &QTimer::timeout, this, [this] {
        verdict_.clear();
        Q_EMIT verdictChanged();
    });
}

QObject* Trainer::source() const {
    return source_;
}

void Trainer::setSource(QObject* source) {
    if (source == source_) {
        return;
    }
    reset();
    if (source_) {
        source_->disconnect(this);
    }
    source_ = qobject_cast<PlaySource*>(source);
    if (source_) {
        connect(source_, &PlaySource::told, this, [this](int node) {
            if (node == node_ && state_.judges()) {
                judgeChoice();
            }
        });
    }
    Q_EMIT sourceChanged();
}

void Trainer::setOpponentPlaysOwnHand(bool own) {
    if (own != opponentPlaysOwnHand_) {
        opponentPlaysOwnHand_ = own;
        QSettings().setValue(ownHandKey, own);
        Q_EMIT rulesChanged();
    }
}

double Trainer::startingPot() const {
    return source_ ? source_->startingPot() : 0;
}

bool Trainer::isHero(const QString& seat) const {
    if (drilling()) {
        return seat == drillActor_;
    }
    return started() && (role_ == QStringLiteral("BOTH") || role_ == seat);
}

QString Trainer::cardOf(Seat seat, std::size_t place) const {
    const auto& hole = holes_[index_of(seat)];
    return hole ? QString::fromStdString(kestrel::card_to_string((*hole)[place])) : QString();
}

std::optional<Hole> Trainer::keptHole(const QString& actor) const {
    const auto& hole = holes_[index_of(seatOf(actor))];
    return hole ? std::optional(suits_.kept(*hole)) : std::nullopt;
}

bool Trainer::take(PlayEvent event) {
    if (!state_.take(event)) {
        return false;
    }
    if (event != PlayEvent::Act && event != PlayEvent::Judge) {
        chosen_ = -1;
    }
    Q_EMIT stageChanged();
    return true;
}

void Trainer::start(const QString& role) {
    const QStringList roles = {QStringLiteral("OOP"), QStringLiteral("IP"), QStringLiteral("BOTH")};
    if (!roles.contains(role) || !NodeView(source_, shownNode_).known) {
        return;
    }
    reset();
    role_ = role;
    hands_ = mistakes_ = 0;
    evLost_ = 0;
    Q_EMIT tallyChanged();
    beginHand();
}

void Trainer::nextHand() {
    if (complete()) {
        shownNode_ = 0;
        Q_EMIT rootWanted();
        beginHand();
    }
}

void Trainer::beginHand() {
    clearHand();
    board_ = solvedBoard_.simplified().remove(' ');
    node_ = shownNode_;
    deal();
    take(PlayEvent::Deal);
    schedule(0);
}

void Trainer::clearHand() {
    step_.stop();
    nextDrill_.stop();
    verdictEnd_.stop();
    suits_ = ShownSuits();
    holes_ = {};
    node_ = -1;
    for (QString* const text : {&board_, &line_, &lastActor_, &lastAction_}) {
        text->clear();
    }
    verdict_.clear();
    Q_EMIT verdictChanged();
    Q_EMIT handChanged();
}

void Trainer::reset() {
    clearHand();
    role_.clear();
    log_.setFollowing(true);
    take(PlayEvent::Leave);
}

/// OOP first, whatever the role: a hand that nobody sees blocks cards as well.
void Trainer::deal() {
    kestrel::CardMask used = cardsOf(board_);
    for (const Seat seat : {Seat::OOP, Seat::IP}) {
        auto& hole = holes_[index_of(seat)];
        hole =
            source_ ? dealHand(source_->range(node_, seat), used, suits_, chance_) : std::nullopt;
        used |= maskOf(hole);
    }
    Q_EMIT handChanged();
}

void Trainer::schedule(int delayMs) {
    step_.start(delayMs);
}

void Trainer::resume() {
    if (state_.now() == PlayStage::Stepping && !step_.isActive()) {
        schedule(0);
    }
}

void Trainer::tick() {
    const NodeView node(source_, node_);
    if (state_.now() != PlayStage::Stepping || !node.known) {
        return;
    }
    if (node.isTerminal()) {
        take(PlayEvent::End);
        logHand({{"endedReason", "terminal"}});
    } else if (node.isChance()) {
        dealCard();
    } else if (node.isDecision() && isHero(node.player())) {
        askUser();
    } else if (node.isDecision()) {
        playOpponent(node.player());
    }
}

/// What the actions are worth is worked out while the user thinks.
void Trainer::askUser() {
    take(PlayEvent::Ask);
    source_->ask(node_, keptHole(NodeView(source_, node_).player()));
}

void Trainer::dealCard() {
    const NodeView node(source_, node_);
    const kestrel::CardMask used = cardsOf(board_) | maskOf(holes_[0]) | maskOf(holes_[1]);
    std::vector<double> weights;
    for (const SolveActionInfo& action : node.actions) {
        const bool isCard = action.name.size() == 2;
        const bool isUsed =
            isCard &&
            (kestrel::card_bit(suits_.shown(kestrel::parse_card(action.name))) & used) != 0;
        weights.push_back(isUsed ? 0 : static_cast<double>(action.frequency));
    }
    if (const auto picked = chance_.pick(weights)) {
        advance(*picked);
    }
}

void Trainer::playOpponent(const QString& actor) {
    const auto picked = pickFor(actor);
    if (!picked) {
        return;
    }
    lastActor_ = actor;
    lastAction_ = NodeView(source_, node_).nameOf(*picked);
    Q_EMIT handChanged();
    advance(*picked);
}

/// Where the hand's own strategy is not known, the range's.
std::optional<std::size_t> Trainer::pickFor(const QString& actor) {
    const NodeView node(source_, node_);
    std::vector<double> weights;
    if (const auto hole = keptHole(actor); opponentPlaysOwnHand_ && hole) {
        weights = source_->strategyOf(node_, seatOf(actor), *hole);
    }
    if (weights.size() != node.actions.size()) {
        weights.clear();
        for (const SolveActionInfo& action : node.actions) {
            weights.push_back(static_cast<double>(action.frequency));
        }
    }
    return chance_.pick(weights);
}

void Trainer::advance(std::size_t action) {
    const NodeView node(source_, node_);
    const int child =
        action < node.actions.size() ? static_cast<int>(node.actions[action].child_index) : 0;
    // The root is nobody's child: 0 stands for none.
    if (child <= 0 || !NodeView(source_, child).known) {
        return;
    }
    QString card;
    if (node.actions[action].name.size() == 2) {
        const kestrel::Card kept = kestrel::parse_card(node.actions[action].name);
        card = QString::fromStdString(kestrel::card_to_string(suits_.shown(kept)));
        board_ += card;
    }
    addStep(node.isChance() ? QStringLiteral("Chance") : node.player(),
            card.isEmpty() ? node.nameOf(action) : card);
    node_ = shownNode_ = child;
    schedule(stepDelayMs_);
    Q_EMIT handChanged();
    Q_EMIT advanced(static_cast<int>(action), card);
}

void Trainer::addStep(const QString& actor, const QString& text) {
    line_ += (line_.isEmpty() ? QString() : QStringLiteral(" → ")) + actor + ": " + text;
}

void Trainer::act(int action) {
    const NodeView node(source_, node_);
    if (action < 0 || static_cast<std::size_t>(action) >= node.actions.size() ||
        !state_.may(PlayEvent::Act)) {
        return;
    }
    chosen_ = action;
    take(PlayEvent::Act);
    if (source_->ask(node_, keptHole(node.player()))) {
        judgeChoice();
    }
}

/// From the first source that knows what the action is worth.
std::optional<Judgement> Trainer::judgementOf(int node, const QString& actor, int action) const {
    if (source_ && action >= 0) {
        for (const std::vector<double>& evs : source_->actionEvs(node, keptHole(actor))) {
            if (const auto judgement = judge(evs, static_cast<std::size_t>(action))) {
                return judgement;
            }
        }
    }
    return std::nullopt;
}

void Trainer::judgeChoice() {
    const auto judgement = judgementOf(node_, NodeView(source_, node_).player(), chosen_);
    const bool wrong = judgement && isMistake(*judgement, {absoluteTolerance_, relativeTolerance_});
    if (drilling()) {
        tellVerdict(judgement, wrong);
    } else if (wrong && stopOnMistakes_) {
        endByMistake(*judgement);
    } else {
        const auto action = static_cast<std::size_t>(chosen_);
        take(PlayEvent::Judge);
        advance(action);
    }
}

void Trainer::endByMistake(const Judgement& judgement) {
    const NodeView node(source_, node_);
    const QString chosen = node.nameOf(static_cast<std::size_t>(chosen_));
    step_.stop();
    addStep(node.player(), chosen);
    const QVariantMap extra = {{"endedReason", "suboptimal"},
                               {"mistakeActor", node.player()},
                               {"mistakeAction", chosen},
                               {"chosenActionIndex", chosen_},
                               {"correctActionIndex", static_cast<int>(judgement.bestIndex)},
                               {"correctAction", node.nameOf(judgement.bestIndex)},
                               {"evLoss", judgement.loss()},
                               {"chosenEv", judgement.chosenEv},
                               {"bestEv", judgement.bestEv}};
    take(PlayEvent::End);
    Q_EMIT handChanged();
    logHand(extra);
}

void Trainer::logHand(const QVariantMap& extra) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const NodeView node(source_, node_);
    QVariantMap hand = {
        {"time", QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))},
        {"board", board_},
        {"role", role_},
        {"oop", oopCard1() + oopCard2()},
        {"ip", ipCard1() + ipCard2()},
        {"line", line_},
        {"endedReason", ""},
        {"mistakeActor", ""},
        {"mistakeAction", ""},
        {"correctAction", ""},
        {"chosenActionIndex", -1},
        {"correctActionIndex", -1},
        {"evLoss", none},
        {"bestEv", none},
        {"chosenEv", none},
        {"pot", chips(node.meta.pot)},
        {"investedOop", chips(node.meta.invested_oop)},
        {"investedIp", chips(node.meta.invested_ip)}};
    hand.insert(extra);
    const double evLoss = hand["evLoss"].toDouble();
    const bool mistake = evLoss > 0 && evLoss < std::numeric_limits<double>::infinity();
    hand["isMistake"] = mistake;
    log_.add(hand);
    ++hands_;
    mistakes_ += mistake ? 1 : 0;
    evLost_ += mistake ? evLoss : 0;
    Q_EMIT tallyChanged();
    Q_EMIT handLogged(mistake, evLoss);
}

bool Trainer::mayDrill() const {
    return state_.may(PlayEvent::BeginDrill) && NodeView(source_, node_).isDecision();
}

void Trainer::startDrill() {
    if (!mayDrill()) {
        return;
    }
    step_.stop();
    drillActor_ = NodeView(source_, node_).player();
    for (QString* const text : {&line_, &lastActor_, &lastAction_}) {
        text->clear();
    }
    deal();
    take(PlayEvent::BeginDrill);
    source_->ask(node_, keptHole(drillActor_));
}

void Trainer::stopDrill() {
    if (!take(PlayEvent::EndDrill)) {
        return;
    }
    nextDrill_.stop();
    verdictEnd_.stop();
    verdict_.clear();
    Q_EMIT verdictChanged();
    schedule(0);
}

void Trainer::tellVerdict(const std::optional<Judgement>& judgement, bool wrong) {
    take(PlayEvent::Judge);
    verdict_ = {{"wrong", wrong}};
    if (judgement) {
        verdict_["best"] = NodeView(source_, node_).nameOf(judgement->bestIndex);
        verdict_["bestIndex"] = static_cast<int>(judgement->bestIndex);
        verdict_["evLoss"] = judgement->loss();
    }
    Q_EMIT verdictChanged();
    nextDrill_.start(nextDrillDelayMs);
    verdictEnd_.start(verdictMs);
}

void Trainer::nextDrillHand() {
    if (state_.now() == PlayStage::DrillVerdict) {
        deal();
        take(PlayEvent::Ask);
        source_->ask(node_, keptHole(drillActor_));
    }
}

void Trainer::walkTo(int node) {
    shownNode_ = node;
    if (node == node_) {
        return;
    }
    if (!started()) {
        reset();
    } else if (state_.may(PlayEvent::Redirect)) {
        node_ = node;
        take(PlayEvent::Redirect);
        schedule(0);
        Q_EMIT handChanged();
    }
}

void Trainer::setBoard(const QString& board, const QString& suits) {
    if (started()) {
        board_ = board;
        suits_ = ShownSuits(suits);
        Q_EMIT handChanged();
    }
}

QVariantMap Trainer::evInfo(int node, const QString& actor, int action) {
    if (source_) {
        source_->learn(node, keptHole(actor));
    }
    const auto judgement = judgementOf(node, actor, action);
    if (!judgement) {
        return {{"ok", false}};
    }
    return {{"ok", true},
            {"chosenEv", judgement->chosenEv},
            {"bestEv", judgement->bestEv},
            {"evLoss", judgement->loss()},
            {"bestIndex", static_cast<int>(judgement->bestIndex)}};
}

}  // namespace tidewell
