#include "engine/solver/batched_walk.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "engine/solver/batch_workspace.h"
#include "engine/solver/chance.h"
#include "engine/solver/kernels.h"
#include "engine/solver/node_passes.h"
#include "engine/solver/profile.h"
#include "engine/solver/simd.h"
#include "engine/solver/terminal.h"

namespace kestrel {
namespace {

/// Where a row stands that lies `floats` from another in the same arena or beyond its ends.
const float* neighbour(const float* row, std::ptrdiff_t floats) {
    const auto bytes = floats * static_cast<std::ptrdiff_t>(sizeof(float));
    return reinterpret_cast<const float*>(reinterpret_cast<std::uintptr_t>(row) +
                                          static_cast<std::uintptr_t>(bytes));
}

void add_row(float* to, const float* row, std::size_t floats) {
    for (std::size_t i = 0; i < floats; ++i) {
        to[i] += row[i];
    }
}

}  // namespace

class BatchedWalks::Walk {
  public:
    /// `written`: the table itself under `WalkRule::iterate`, otherwise null.
    Walk(WorkspacePool& spaces, WalkRule rule, const Game& game, const StateTable& states,
         StateTable* written, const Discounts& discounts, Seat seat, WorkerPool* pool,
         std::size_t threads)
        : spaces_(spaces),
          rule_(rule),
          game_(game),
          states_(states),
          written_(written),
          discounts_(discounts),
          seat_(seat),
          pool_(pool),
          threads_(threads),
          own_hands_(game.cards.pockets[index_of(seat)].size()),
          their_hands_(game.cards.pockets[index_of(other(seat))].size()),
          own_row_(padded_row(own_hands_)),
          their_row_(padded_row(their_hands_)) {}

    /// `out`: a tight row for each of the nodes, which share a board.
    void run(std::span<const std::uint64_t> nodes, std::span<const float> reach,
             std::span<float> out) {
        const WorkspacePool::Lease lease(spaces_);
        RowArena rows;
        float* const padded_reach = rows.take(their_row_);
        std::fill_n(padded_reach, their_row_, 0.0F);
        std::ranges::copy(reach, padded_reach);
        std::vector<Visit> visits;
        for (const std::uint64_t node : nodes) {
            visits.push_back({node, padded_reach, rows.take(own_row_)});
        }
        solve_street(*lease, 0, visits, true);
        for (std::size_t i = 0; i < visits.size(); ++i) {
            std::copy_n(visits[i].value, own_hands_, out.data() + i * own_hands_);
        }
    }

  private:
    /// Rows of one batch, in floats. More lines in a batch fill the lanes better and give the
    /// fetcher more time; past a few second-level caches' worth the rows themselves go cold. On 1
    /// MB of it, the quick-solve spot's iteration takes 345 ms at half of this, 332 here, 340 at
    /// double.
    static constexpr std::size_t batch_floats = 192 * 1024;

    /// Values of roots that share a board, in batches of as many as fit the caches.
    void solve_street(BatchWorkspace& space, std::size_t depth, std::span<const Visit> roots,
                      bool may_fan_out) {
        StreetWork& work = space.streets[depth];
        for (std::size_t i = 0; i < roots.size();) {
            work.clear();
            do {
                descend(space, work, roots[i]);
                ++i;
            } while (i < roots.size() && work.rows.used() < batch_floats);
            evaluate_terminals(space, work, game_.nodes[roots[0].node]);
            if (!work.chances.empty()) {
                deal(space, depth, may_fan_out);
            }
            for (std::size_t k = work.decisions.size(); k-- > 0;) {
                finish(space, work.decisions[k]);
            }
        }
    }

    void descend(BatchWorkspace& space, StreetWork& work, const Visit& visit) {
        const GameNode& node = game_.nodes[visit.node];
        if (node.kind == NodeKind::Terminal) {
            add_terminal(work, visit, node);
            return;
        }
        if (node.actions.empty()) {
            std::fill_n(visit.value, own_row_, 0.0F);
            return;
        }
        if (node.kind == NodeKind::Chance) {
            work.chances.push_back(visit);
            return;
        }
        const std::size_t actions = node.actions.size();
        const bool own = node.seat == seat_;
        if (!own && actions == 1) {
            descend(space, work, {node.children[0], visit.reach, visit.value});
            return;
        }
        const float* reach = visit.reach;
        std::size_t reach_step = 0;
        if (!own) {
            reach = next_reach(space, work, visit);
            reach_step = their_row_;
        }
        float* const values = work.rows.take(actions * own_row_);
        work.decisions.push_back({visit.node, own, values, visit.value});
        for (std::size_t a = 0; a < actions; ++a) {
            descend(space, work, {node.children[a], reach + a * reach_step, values + a * own_row_});
        }
    }

    void add_terminal(StreetWork& work, const Visit& visit, const GameNode& node) {
        if (node.last_action == ActionKind::fold) {
            const double payoff = fold_payoff(game_, node, seat_);
            work.folds.push_back({visit.reach, visit.value, false, {payoff, 0.0, 0.0}});
        } else if (node.turn == NO_CARD || node.river == NO_CARD) {
            const ShowdownRule rule = runout_rule(game_, node);
            work.all_ins.push_back({visit.reach, visit.value, rule.raked, rule.payoffs});
            work.all_in_node = visit.node;
        } else {
            const ShowdownRule rule = showdown_rule(game_, node);
            work.showdowns.push_back({visit.reach, visit.value, rule.raked, rule.payoffs});
        }
    }

    /// Whether the fused passes take the node; the plain form takes all. Under the average
    /// strategies a lock shows through the strategy sums alone.
    bool fuses(std::size_t node, const NodeState& state) const {
        return !state.packed && state.num_actions <= most_fused_actions &&
               (rule_ != WalkRule::iterate || game_.node_lock(node).empty());
    }

    const float* next_reach(BatchWorkspace& space, StreetWork& work, const Visit& visit) {
        const NodeState& state = states_[visit.node];
        const std::size_t actions = state.num_actions;
        float* const rows = work.rows.take(actions * their_row_);
        if (fuses(visit.node, state)) {
            // A seat's rows of a street stand in the order of this way down.
            const float* const row =
                rule_ == WalkRule::iterate ? state.regrets().data() : state.strategy_sum().data();
            const float* const ahead = neighbour(row, std::ssize(state.regrets()));
            if (rule_ == WalkRule::iterate) {
                current_reach(rows, row, visit.reach, actions, their_hands_, ahead);
            } else {
                average_reach(rows, row, visit.reach, actions, their_hands_, ahead);
            }
            return rows;
        }
        const std::span reach(visit.reach, their_hands_);
        if (rule_ == WalkRule::iterate) {
            current_reach_rows(game_, visit.node, state, reach, space.frame);
        } else {
            average_reach_rows(state, reach, space.frame);
        }
        for (std::size_t a = 0; a < actions; ++a) {
            std::copy_n(space.frame.next_reach.data() + a * their_hands_, their_hands_,
                        rows + a * their_row_);
        }
        return rows;
    }

    void finish(BatchWorkspace& space, const Decision& decision) {
        const NodeState& state = states_[decision.node];
        const std::size_t actions = state.num_actions;
        if (!decision.own) {
            sum_padded_rows(decision.value, decision.values, actions, own_hands_);
            return;
        }
        if (rule_ == WalkRule::best) {
            if (game_.node_lock(decision.node).empty()) {
                largest_value(decision.value, decision.values, actions, own_hands_);
                return;
            }
        } else if (fuses(decision.node, state)) {
            if (rule_ == WalkRule::iterate) {
                update_own_node(
                    state.regrets().data(), state.strategy_sum().data(), decision.values,
                    decision.value, actions, own_hands_, discounts_.alpha, discounts_.beta,
                    discounts_.gamma,
                    neighbour(state.regrets().data(), -std::ssize(state.regrets())),
                    neighbour(state.strategy_sum().data(), -std::ssize(state.regrets())));
            } else {
                average_value(decision.value, state.strategy_sum().data(), decision.values, actions,
                              own_hands_);
            }
            return;
        }
        ScratchFrame& frame = space.frame;
        frame.action_values.resize(state.size());
        for (std::size_t a = 0; a < actions; ++a) {
            std::copy_n(decision.values + a * own_row_, own_hands_,
                        frame.action_values.data() + a * own_hands_);
        }
        const std::span out(decision.value, own_hands_);
        if (rule_ == WalkRule::iterate) {
            update_decision(game_, decision.node, (*written_)[decision.node], discounts_, frame,
                            out);
        } else if (rule_ == WalkRule::average) {
            average_decision_value(state, frame, out);
        } else {
            best_decision_value(game_.node_lock(decision.node), actions, frame, out);
        }
    }

    /// The row that a way down reads at a decision of the other seat.
    std::span<const float> way_down_row(std::size_t node) const {
        const NodeState& state = states_[node];
        return rule_ == WalkRule::iterate ? state.regrets() : state.strategy_sum();
    }

    /// Has the rows fetched, while the terminals compute, that the way up will want, and then those
    /// that the next batch's way down will: most boards are laid out alike, so they stand as far
    /// from this batch's as these from the last one's.
    void fetch_while_evaluating(BatchWorkspace& space, StreetWork& work) const {
        RowFetcher& fetcher = space.lanes.fetcher;
        fetcher.clear();
        for (std::size_t k = work.decisions.size(); k-- > 0;) {
            if (!work.decisions[k].own) {
                continue;
            }
            const NodeState& state = states_[work.decisions[k].node];
            if (rule_ == WalkRule::iterate) {
                fetcher.add(state.regrets());
            }
            if (rule_ != WalkRule::best) {
                fetcher.add(state.strategy_sum());
            }
        }
        const auto theirs = std::ranges::find(work.decisions, false, &Decision::own);
        if (theirs == work.decisions.end()) {
            return;
        }
        const auto first = reinterpret_cast<std::uintptr_t>(way_down_row(theirs->node).data());
        const std::uintptr_t step = first - work.last_way_down;
        work.last_way_down = first;
        for (const Decision& decision : work.decisions) {
            if (!decision.own) {
                const std::span<const float> row = way_down_row(decision.node);
                fetcher.add(reinterpret_cast<std::uintptr_t>(row.data()) + step, row.size_bytes());
            }
        }
    }

    void evaluate_terminals(BatchWorkspace& space, StreetWork& work, const GameNode& root) {
        fetch_while_evaluating(space, work);
        if (!work.folds.empty()) {
            space.lanes.folds(seat_, root.turn, root.river, work.folds);
        }
        if (!work.showdowns.empty()) {
            space.lanes.showdowns(seat_, root.turn, root.river, work.showdowns);
        }
        if (!work.all_ins.empty()) {
            const GameNode& node = game_.nodes[work.all_in_node];
            space.lanes.all_ins(seat_, runouts_of(game_, node), runout_divisor(game_, node),
                                work.all_ins);
        }
    }

    /// Where the values behind each card of a deal go, a row for each line. Cards that are kept
    /// have rows of their own; the others share the passing ones, which are read before the next
    /// card.
    struct DealtRows {
        std::array<float*, card_count> kept{};
        float* passing = nullptr;

        float* of(std::size_t card) const { return kept[card] != nullptr ? kept[card] : passing; }
    };

    /// Deals each card of the next street to all lines that wait for it.
    void deal(BatchWorkspace& space, std::size_t depth, bool may_fan_out) {
        StreetWork& work = space.streets[depth];
        const GameNode& first = game_.nodes[work.chances[0].node];
        const std::size_t cards = first.children.size();
        scale_reach(work, chance_factor(first));
        const bool fan_out = may_fan_out && pool_ != nullptr && threads_ >= 2 &&
                             worth_fanning_out(cards, own_hands_);
        const DealtRows rows = take_dealt_rows(work, first, fan_out);
        if (fan_out) {
            // The rows are where the card says, so who does it shows nowhere.
            parallel_turns(pool_, threads_, cards, [&](Turns& turns) {
                const WorkspacePool::Lease lease(spaces_);
                while (const auto card = turns.take()) {
                    solve_card(*lease, depth, work.chances, *card, rows.of(*card), false);
                }
            });
        }
        for (std::size_t card = 0; card < cards; ++card) {
            if (!fan_out) {
                solve_card(space, depth, work.chances, card, rows.of(card), may_fan_out);
            }
            add_card(work, rows.of(card));
        }
        add_references(work, first, rows);
    }

    /// Brings the lines at a deal to the reach behind it and to values of nothing.
    void scale_reach(StreetWork& work, float factor) {
        for (Visit& chance : work.chances) {
            float* const scaled = work.rows.take(their_row_);
            scale_row(scaled, chance.reach, factor == 0.0F ? 1.0F : 1.0F / factor, their_row_);
            chance.reach = scaled;
            std::fill_n(chance.value, own_row_, 0.0F);
        }
    }

    /// A card's rows are added up as soon as they are there, in the order of the cards; those that
    /// stand for other cards as well are kept. Cards on different threads keep all rows.
    DealtRows take_dealt_rows(StreetWork& work, const GameNode& first, bool keep_all) const {
        const std::size_t floats = work.chances.size() * own_row_;
        const std::size_t cards = first.children.size();
        DealtRows rows;
        const auto keep = [&](std::size_t card) {
            if (card < cards && rows.kept[card] == nullptr) {
                rows.kept[card] = work.rows.take(floats);
            }
        };
        for (std::size_t card = 0; keep_all && card < cards; ++card) {
            keep(card);
        }
        std::ranges::for_each(game_.references(first), keep);
        rows.passing = work.rows.take(floats);
        return rows;
    }

    /// The lines behind one card, into `values`, in the buffers of the thread that does it.
    void solve_card(BatchWorkspace& space, std::size_t depth, std::span<const Visit> lines,
                    std::size_t card, float* values, bool may_fan_out) {
        std::vector<Visit>& dealt = space.streets[depth].dealt;
        dealt.clear();
        for (const Visit& line : lines) {
            dealt.push_back({game_.nodes[line.node].children[card], line.reach, values});
            values += own_row_;
        }
        solve_street(space, depth + 1, dealt, may_fan_out);
    }

    void add_card(const StreetWork& work, const float* values) const {
        const ProfileScope timer(ProfileSlot::sum_rows_into, work.chances.size());
        for (const Visit& line : work.chances) {
            add_row(line.value, values, own_row_);
            values += own_row_;
        }
    }

    void add_references(const StreetWork& work, const GameNode& first,
                        const DealtRows& rows) const {
        const std::vector<std::uint8_t>& references = game_.references(first);
        for (std::size_t k = 0; k < references.size(); ++k) {
            if (references[k] >= first.children.size()) {
                continue;
            }
            const auto& swaps = game_.swap_list(first, k)[index_of(seat_)];
            const float* row = rows.kept[references[k]];
            for (const Visit& line : work.chances) {
                add_row(line.value, swaps.empty() ? row : swapped(row, swaps, rows.passing),
                        own_row_);
                row += own_row_;
            }
        }
    }

    /// The row with hands that trade places, in `buffer`.
    const float* swapped(const float* row, const auto& swaps, float* buffer) const {
        std::copy_n(row, own_row_, buffer);
        for (const auto& [x, y] : swaps) {
            std::swap(buffer[x], buffer[y]);
        }
        return buffer;
    }

    WorkspacePool& spaces_;
    const WalkRule rule_;
    const Game& game_;
    const StateTable& states_;
    StateTable* const written_;
    const Discounts discounts_;
    const Seat seat_;
    WorkerPool* const pool_;
    const std::size_t threads_;
    const std::size_t own_hands_;
    const std::size_t their_hands_;
    const std::size_t own_row_;    // floats of a padded row of this seat
    const std::size_t their_row_;  // and of the other
};

BatchedWalks::BatchedWalks() = default;
BatchedWalks::~BatchedWalks() = default;

bool BatchedWalks::prepare(const Game& game, const StateTable& states, WorkerPool* pool,
                           std::size_t threads) {
    if (game.nodes.empty() || game.nodes[0].kind != NodeKind::Decision) {
        return false;
    }
    // Behind one turn card, and before it, all chance nodes deal alike.
    std::array<const GameNode*, card_count + 1> dealer{};
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const GameNode& node = game.nodes[i];
        if (node.kind != NodeKind::Chance) {
            continue;
        }
        const GameNode*& known = dealer[node.turn == NO_CARD ? card_count : std::size_t{node.turn}];
        known = known == nullptr ? &node : known;
        if (!states.children_distinct(i) || !std::ranges::equal(known->actions, node.actions)) {
            return false;
        }
    }
    orders_.build(game.cards, pool, threads);
    spaces_ = std::make_unique<WorkspacePool>(game, orders_);
    return true;
}

void BatchedWalks::run(WalkRule rule, const Game& game, StateTable& states,
                       const Discounts& discounts, Seat seat, std::span<const float> reach,
                       std::span<float> out, WorkerPool* pool, std::size_t threads) {
    const std::uint64_t root = 0;
    Walk(*spaces_, rule, game, states, &states, discounts, seat, pool, threads)
        .run({&root, 1}, reach, out);
}

void BatchedWalks::values(const Game& game, const StateTable& states, Seat seat,
                          std::span<const float> reach, std::span<const std::uint64_t> nodes,
                          std::span<float> out, WorkerPool* pool, std::size_t threads) const {
    Walk(*spaces_, WalkRule::average, game, states, nullptr, {}, seat, pool, threads)
        .run(nodes, reach, out);
}

}  // namespace kestrel
