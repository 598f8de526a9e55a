#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QVariantMap>
#include <QtQmlIntegration>
#include <array>
#include <optional>

#include "app/play/dealing.h"
#include "app/play/hand_log.h"
#include "app/play/judgement.h"
#include "app/play/play_stage.h"

namespace tidewell {

class PlaySource;

/// The training table: deals hands of a solved spot, plays the seats that nobody has taken as the
/// solution does, and compares every choice of the user with what the same hand could have had at
/// the same node. Money in chips, cards as "Ah", seats as "OOP" and "IP"; nodes by their index.
///
/// It does not walk the tree by itself: `advanced` and `rootWanted` say where the tree is to go,
/// and whoever walks it tells where it stands by `walkTo`. Values of actions are asked for as soon
/// as it is the user's turn, and worked out beside the event loop.
class Trainer : public QObject {
    Q_OBJECT
    QML_ELEMENT

    /// A controller's `playSource`; null for none.
    Q_PROPERTY(QObject* source READ source WRITE setSource NOTIFY sourceChanged)
    /// The board of the solve.
    Q_PROPERTY(QString solvedBoard MEMBER solvedBoard_ NOTIFY sourceChanged)
    /// Between two steps of a hand, whoever takes them.
    Q_PROPERTY(int stepDelayMs MEMBER stepDelayMs_ NOTIFY rulesChanged)
    Q_PROPERTY(bool stopOnMistakes MEMBER stopOnMistakes_ NOTIFY rulesChanged)
    Q_PROPERTY(double absoluteTolerance MEMBER absoluteTolerance_ NOTIFY rulesChanged)
    Q_PROPERTY(double relativeTolerance MEMBER relativeTolerance_ NOTIFY rulesChanged)
    /// The opponent acts as the solution does with the hand that it holds, not as its whole range
    /// does on average. Kept in the settings store.
    Q_PROPERTY(bool opponentPlaysOwnHand READ opponentPlaysOwnHand WRITE setOpponentPlaysOwnHand
                   NOTIFY rulesChanged)

    /// "OOP", "IP", "BOTH", or empty before one is chosen.
    Q_PROPERTY(QString role READ role NOTIFY stageChanged)
    Q_PROPERTY(bool started READ started NOTIFY stageChanged)
    Q_PROPERTY(bool awaitsUser READ awaitsUser NOTIFY stageChanged)
    Q_PROPERTY(bool complete READ complete NOTIFY stageChanged)
    Q_PROPERTY(bool drilling READ drilling NOTIFY stageChanged)
    /// "OOP" or "IP" and the node of a drill; empty and -1 outside of one.
    Q_PROPERTY(QString drillActor READ drillActor NOTIFY stageChanged)
    Q_PROPERTY(int drillNode READ drillNode NOTIFY stageChanged)
    /// What the user has chosen at the node, until the hand goes on; -1 for nothing.
    Q_PROPERTY(int chosenAction READ chosenAction NOTIFY stageChanged)

    Q_PROPERTY(QString board READ board NOTIFY handChanged)
    Q_PROPERTY(int node READ node NOTIFY handChanged)  ///< -1 without a hand
    Q_PROPERTY(QString oopCard1 READ oopCard1 NOTIFY handChanged)
    Q_PROPERTY(QString oopCard2 READ oopCard2 NOTIFY handChanged)
    Q_PROPERTY(QString ipCard1 READ ipCard1 NOTIFY handChanged)
    Q_PROPERTY(QString ipCard2 READ ipCard2 NOTIFY handChanged)
    /// The steps of the hand, " → " between them: "OOP: Bet 33%", "Chance: Kh".
    Q_PROPERTY(QString line READ line NOTIFY handChanged)
    /// What a seat that is not the user's has done last.
    Q_PROPERTY(QString lastActor READ lastActor NOTIFY handChanged)
    Q_PROPERTY(QString lastAction READ lastAction NOTIFY handChanged)

    /// What the drill says of the last choice: `wrong`, and then `best` (the name of the action),
    /// `bestIndex` and `evLoss`. Empty while it says nothing.
    Q_PROPERTY(QVariantMap verdict READ verdict NOTIFY verdictChanged)

    // Since the role was chosen.
    Q_PROPERTY(int hands READ hands NOTIFY tallyChanged)
    Q_PROPERTY(int mistakes READ mistakes NOTIFY tallyChanged)
    Q_PROPERTY(double evLost READ evLost NOTIFY tallyChanged)
    Q_PROPERTY(double startingPot READ startingPot NOTIFY tallyChanged)

    Q_PROPERTY(tidewell::HandLog* log READ log CONSTANT)

  public:
    explicit Trainer(QObject* parent = nullptr);

    QObject* source() const;
    void setSource(QObject* source);
    bool opponentPlaysOwnHand() const { return opponentPlaysOwnHand_; }
    void setOpponentPlaysOwnHand(bool own);
    QString role() const { return role_; }
    bool started() const { return state_.started(); }
    bool awaitsUser() const { return state_.awaitsUser(); }
    bool complete() const { return state_.now() == PlayStage::Complete; }
    bool drilling() const { return state_.drills(); }
    QString drillActor() const { return drilling() ? drillActor_ : QString(); }
    int drillNode() const { return drilling() ? node_ : -1; }
    int chosenAction() const { return chosen_; }
    QString board() const { return board_; }
    int node() const { return node_; }
    QString oopCard1() const { return cardOf(kestrel::Seat::OOP, 0); }
    QString oopCard2() const { return cardOf(kestrel::Seat::OOP, 1); }
    QString ipCard1() const { return cardOf(kestrel::Seat::IP, 0); }
    QString ipCard2() const { return cardOf(kestrel::Seat::IP, 1); }
    QString line() const { return line_; }
    QString lastActor() const { return lastActor_; }
    QString lastAction() const { return lastAction_; }
    QVariantMap verdict() const { return verdict_; }
    int hands() const { return hands_; }
    int mistakes() const { return mistakes_; }
    double evLost() const { return evLost_; }
    double startingPot() const;
    HandLog* log() { return &log_; }

    /// What is dealt and picked from now on follows from it.
    Q_INVOKABLE void seed(quint32 value) { chance_.seed(value); }

    /// Takes a seat, or both, and deals the first hand at the node where the tree stands. A role
    /// that is none is ignored.
    Q_INVOKABLE void start(const QString& role);

    /// Deals another hand for the same role, from the root. Only once a hand has ended.
    Q_INVOKABLE void nextHand();

    /// Gives up the role and whatever is under way; the log stays.
    Q_INVOKABLE void reset();

    /// The next automatic step, at once.
    Q_INVOKABLE void tick();

    /// Holds the steps up while a card is chosen, and lets them go on.
    Q_INVOKABLE void pause() { step_.stop(); }
    Q_INVOKABLE void resume();

    /// The user's choice at the node, or in the drill. Ignored when it is not the user's turn.
    Q_INVOKABLE void act(int action);

    /// Repeats the decision at the node with other hands, until `stopDrill`; the hand then goes on
    /// there with the cards of the last one.
    Q_INVOKABLE void startDrill();
    Q_INVOKABLE void stopDrill();
    Q_INVOKABLE bool mayDrill() const;

    /// The tree stands at another node. A hand that runs goes on there.
    Q_INVOKABLE void walkTo(int node);

    /// A card of the board was replaced: the board as it is now, and how suits are shown from here
    /// on, the suit for each of "cdhs".
    Q_INVOKABLE void setBoard(const QString& board, const QString& suits);

    /// What an action is worth for the hand that the seat holds: `ok`, `chosenEv`, `bestEv`,
    /// `evLoss`, `bestIndex`. May take as long as a walk of the solver.
    Q_INVOKABLE QVariantMap evInfo(int node, const QString& actor, int action);

    /// Whether a seat, "OOP" or "IP", is the user's now.
    Q_INVOKABLE bool isHero(const QString& seat) const;

  Q_SIGNALS:
    void sourceChanged();
    void rulesChanged();
    void stageChanged();
    void handChanged();
    void verdictChanged();
    void tallyChanged();

    /// The hand has gone on by an action of the node; `card` is the one dealt, as shown, or empty.
    void advanced(int action, const QString& card);
    /// The hand begins at the root.
    void rootWanted();
    void handLogged(bool isMistake, double evLoss);

  private:
    QString cardOf(kestrel::Seat seat, std::size_t place) const;
    std::optional<Hole> keptHole(const QString& actor) const;
    bool take(PlayEvent event);
    void clearHand();
    void beginHand();
    void deal();
    void schedule(int delayMs);
    void askUser();
    void dealCard();
    void playOpponent(const QString& actor);
    std::optional<std::size_t> pickFor(const QString& actor);
    void advance(std::size_t action);
    void addStep(const QString& actor, const QString& text);
    std::optional<Judgement> judgementOf(int node, const QString& actor, int action) const;
    void judgeChoice();
    void endByMistake(const Judgement& judgement);
    void logHand(const QVariantMap& extra);
    void tellVerdict(const std::optional<Judgement>& judgement, bool wrong);
    void nextDrillHand();

    QPointer<PlaySource> source_;
    QString solvedBoard_;
    int stepDelayMs_ = 1000;
    bool stopOnMistakes_ = true;
    double absoluteTolerance_ = Tolerance().absolute;
    double relativeTolerance_ = Tolerance().relative;
    bool opponentPlaysOwnHand_ = false;

    PlayState state_;
    QString role_;
    QString drillActor_;
    int chosen_ = -1;
    QString board_;
    int node_ = -1;
    int shownNode_ = 0;                         // where the tree stands
    std::array<std::optional<Hole>, 2> holes_;  // as shown, OOP's first
    ShownSuits suits_;
    QString line_;
    QString lastActor_;
    QString lastAction_;
    QVariantMap verdict_;
    int hands_ = 0;
    int mistakes_ = 0;
    double evLost_ = 0;

    Chance chance_;
    HandLog log_;
    QTimer step_;
    QTimer nextDrill_;
    QTimer verdictEnd_;
};

}  // namespace tidewell
