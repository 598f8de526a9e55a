#pragma once

#include <QObject>
#include <QSet>
#include <atomic>
#include <memory>
#include <optional>
#include <vector>

#include "app/play/dealing.h"
#include "app/results/node_answers.h"
#include "app/results/solve_results.h"
#include "session/solve_session.h"

namespace tidewell {

/// What a training table asks of a finished solve, or of what a project has kept of one. What takes
/// a walk of the solver is worked out on threads of the global pool: work that has not begun keeps
/// no solve alive, and the destructor waits for what has. Cards as the tree keeps them. Thread of
/// the event loop; the objects it is made of must outlive it.
class PlaySource : public QObject {
    Q_OBJECT

  public:
    PlaySource(const kestrel_app::SolveSession& session, const SolveResults& results,
               NodeAnswers& answers, QObject* parent = nullptr)
        : QObject(parent), session_(session), results_(results), answers_(answers) {}
    ~PlaySource() override;

    /// Null without a result.
    const kestrel_app::TreeSnapshot* tree() const { return results_.tree.snapshot(); }
    double startingPot() const { return results_.startingPot; }  ///< chips

    /// The hands of a seat's range that the node's board leaves.
    std::vector<kestrel_app::SeatCombo> range(int node, kestrel::Seat seat);

    /// How often a hand of the acting seat takes each action; empty where that is not known.
    std::vector<double> strategyOf(int node, kestrel::Seat seat, const Hole& hole) const;

    /// Sees to it that `actionEvs` knows as much as can be known: true when it does so already,
    /// otherwise `told` follows.
    bool ask(int node, const std::optional<Hole>& hole);

    /// As much at once, however long it takes.
    void learn(int node, const std::optional<Hole>& hole);

    /// What each action of a decision is worth, in chips: lists to be trusted in this order, first
    /// that of the hand itself, then the mean over all hands.
    std::vector<std::vector<double>> actionEvs(int node, const std::optional<Hole>& hole) const;

    /// The result is another one, or none.
    void clear();

  Q_SIGNALS:
    void told(int node);

  private:
    const kestrel_app::NodeRecord* recordOf(int node) const;
    const kestrel_app::HandCombo* comboOf(int node, const Hole& hole) const;
    bool knows(int node, const std::optional<Hole>& hole) const;

    const kestrel_app::SolveSession& session_;
    const SolveResults& results_;
    NodeAnswers& answers_;
    QSet<int> pending_;
    // Told to the workers of the present result, all of which share it.
    std::shared_ptr<std::atomic<bool>> stop_ = std::make_shared<std::atomic<bool>>(false);
};

}  // namespace tidewell
