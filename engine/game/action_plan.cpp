#include "engine/game/action_plan.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <memory>
#include <stdexcept>
#include <utility>

#include "engine/game/environment.h"
#include "engine/game/legal_actions.h"

namespace kestrel {

/// The running state of the hand at one node. Amounts in hundredths of a chip.
struct ActionPlan::BuildContext {
    ActionKind last_step = ActionKind::none;  // what led here, also a dealt card
    std::int32_t raises_this_street = 0;      // bets and raises so far; reset by a call
    bool all_in = false;
    Seat last_aggressor = Seat::OOP;      // after a call: whose bet was called; otherwise OOP
    std::array<std::int32_t, 2> stack{};  // left per seat
    std::int32_t street_bet = 0;          // the bet level on this street
    std::array<std::int32_t, 2> contributed{};
    std::int32_t pot = 0;
    Seat last_actor = Seat::OOP;
    ActionKind last_bet_action = ActionKind::none;
    CardMask dead_cards = 0;
    Card turn = NO_CARD;
    Card river = NO_CARD;
};

/// A child before it enters the list.
struct ActionPlan::PlanChild {
    BuildContext context;
    PlanNode node;
};

/// A task's place among the workers, from before it starts until it is gone.
struct ActionPlan::WorkerPlace {
    explicit WorkerPlace(std::atomic<std::size_t>& counter) : workers(counter) { ++workers; }
    ~WorkerPlace() { --workers; }
    WorkerPlace(const WorkerPlace&) = delete;
    WorkerPlace& operator=(const WorkerPlace&) = delete;

    std::atomic<std::size_t>& workers;
};

/// The buffers of an expansion: one for each thread that builds, so that no node allocates.
struct ActionPlan::Candidates {
    std::vector<Action> actions;
    std::vector<Action> wagers;
};

namespace {

Board board_of(const CardContext* cards) {
    if (cards != nullptr) {
        return cards->board;
    }
    return {NO_CARD, NO_CARD, NO_CARD, NO_CARD, NO_CARD};
}

Street next_street(Street street) {
    return street == Street::Flop ? Street::Turn : Street::River;
}

}  // namespace

ActionPlan::ActionPlan(PlanOptions plan_options, const CardContext* card_context)
    : options(std::move(plan_options)),
      board(board_of(card_context)),
      cards(card_context),
      max_workers(number_from_environment("KESTREL_ACTIONPLAN_MAX_WORKERS", 1, hardware_threads())),
      parallel_depth(number_from_environment("KESTREL_ACTIONPLAN_PARALLEL_DEPTH", 0, 0)) {
    BuildContext root;
    root.stack = {options.effective_stack, options.effective_stack};
    root.pot = options.starting_pot;
    for (const Card card : board) {
        root.dead_cards |= card_bit(card);
    }
    root.turn = board[3];
    root.river = board[4];

    PlanNode node;
    node.street = options.starting_street;
    node.pot = options.starting_pot;
    node.turn = root.turn;
    node.river = root.river;
    nodes.push_back(node);
    Candidates candidates;
    build_recursive(0, root, 0, candidates);
}

std::size_t ActionPlan::memory_bytes() const {
    return nodes.size() * sizeof(PlanNode) + edge_count_ * (sizeof(Action) + sizeof(std::uint64_t));
}

std::unique_lock<std::mutex> ActionPlan::lock_nodes() {
    // Without tasks there is one thread and nothing to guard.
    return parallel_depth == 0 ? std::unique_lock<std::mutex>()
                               : std::unique_lock<std::mutex>(nodes_lock);
}

void ActionPlan::build_recursive(std::size_t node_index, const BuildContext& context,
                                 std::size_t depth, Candidates& candidates) {
    PlanNode node;
    {
        const auto lock = lock_nodes();
        node = nodes[node_index];
    }
    list_actions(node, context, candidates);
    const std::size_t count = candidates.actions.size();
    if (count == 0) {
        return;
    }

    std::span<Action> actions;
    std::span<std::uint64_t> children;
    {
        const auto lock = lock_nodes();
        actions = action_pool_.allocate(count);
        children = child_pool_.allocate(count);
        edge_count_ += count;
        nodes[node_index].actions = actions;
        nodes[node_index].children = children;
    }
    std::ranges::copy(candidates.actions, actions.begin());

    std::vector<std::future<void>> tasks;
    std::exception_ptr failure;
    try {
        for (std::size_t i = 0; i < count; ++i) {
            const PlanChild child = child_of(node, context, actions[i]);
            {
                const auto lock = lock_nodes();
                children[i] = nodes.size();
                nodes.push_back(child.node);
            }
            if (child.node.kind == NodeKind::Terminal && !child.node.runout_pending) {
                continue;
            }
            const std::size_t index = children[i];
            if (depth < parallel_depth && active_workers < max_workers) {
                tasks.push_back(std::async(
                    std::launch::async, [this, index, depth, child_context = child.context,
                                         place = std::make_shared<WorkerPlace>(active_workers)] {
                        Candidates own_candidates;
                        build_recursive(index, child_context, depth + 1, own_candidates);
                    }));
            } else {
                build_recursive(index, child.context, depth + 1, candidates);
            }
        }
    } catch (...) {
        failure = std::current_exception();
    }
    for (auto& task : tasks) {
        try {
            task.get();
        } catch (...) {
            failure = failure == nullptr ? std::current_exception() : failure;
        }
    }
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

void ActionPlan::list_actions(const PlanNode& node, const BuildContext& context,
                              Candidates& candidates) const {
    candidates.actions.clear();
    if (node.kind == NodeKind::Decision) {
        list_decision(node, context, candidates);
    } else if (node.kind == NodeKind::Chance || node.runout_pending) {
        list_deal(context, candidates);
    }
}

const StreetSizing& ActionPlan::sizing(Street street) const {
    switch (street) {
        case Street::Flop:
            return options.flop;
        case Street::Turn:
            return options.turn;
        case Street::River:
            return options.river;
    }
    throw std::logic_error("Unknown street");
}

void ActionPlan::list_decision(const PlanNode& node, const BuildContext& context,
                               Candidates& candidates) const {
    const Seat me = node.seat;
    const std::size_t mine = index_of(me);
    const std::size_t theirs = index_of(other(me));
    const StreetSizing& sizes = sizing(node.street);

    const std::int32_t to_call = context.stack[mine] - context.stack[theirs];
    SizeContext size;
    size.pot_after_call = options.starting_pot + 2 * (node.matched + to_call);
    size.street_bet = context.street_bet;
    size.max_raise_to = context.street_bet + context.stack[theirs];
    size.min_raise_to = std::max(1, context.street_bet + std::min(to_call, context.stack[theirs]));
    size.streets_left = 3 - static_cast<std::int32_t>(node.street);
    size.stack_to_pot = size.pot_after_call > 0
                            ? static_cast<double>(context.stack[theirs]) / size.pot_after_call
                            : 0.0;

    // Leading into the player who had the betting lead; the first action of the hand counts as it.
    const bool first_in_hand =
        context.last_step == ActionKind::none && node.street == options.starting_street;
    const bool into_aggressor =
        context.last_step == ActionKind::chance && context.last_aggressor == Seat::IP;
    const bool donk_spot =
        me == Seat::OOP && sizes.donk_sizes.has_value() && (first_in_hand || into_aggressor);

    LegalActions list(size, candidates.actions);
    if (donk_spot || context.last_step == ActionKind::none ||
        context.last_step == ActionKind::check || context.last_step == ActionKind::chance) {
        list.add(ActionKind::check, 0);
        list.add_bets(donk_spot         ? *sizes.donk_sizes
                      : me == Seat::OOP ? sizes.oop_bets
                                        : sizes.ip_bets);
    } else {
        list.add(ActionKind::fold, 0);
        list.add(ActionKind::call, std::max(0, std::min(to_call, context.stack[mine])));
        if (!context.all_in) {
            list.add_raises(me == Seat::OOP ? sizes.oop_raises : sizes.ip_raises,
                            context.raises_this_street);
        }
    }
    const double jam = options.jam_threshold[mine];
    if (!context.all_in && jam > 0 && size.max_raise_to >= 1 &&
        size.max_raise_to <= std::round(size.pot_after_call * jam)) {
        list.add_jam();
    }
    list.round_to_all_in(context.pot, options.all_in_threshold);
    list.order(candidates.wagers);
    list.merge(options.merge_threshold);
}

void ActionPlan::list_deal(const BuildContext& context, Candidates& candidates) const {
    const bool dealing_turn = context.turn == NO_CARD;
    if (!dealing_turn && context.river != NO_CARD) {
        return;
    }
    const Card fixed = dealing_turn ? board[3] : board[4];
    CardMask left = fixed == NO_CARD ? (CardMask{1} << card_count) - 1 : card_bit(fixed);
    left &= ~context.dead_cards;
    if (fixed == NO_CARD && cards != nullptr) {
        const SuitIsomorphism& iso = cards->isomorphism;
        const std::vector<Card>& skipped =
            dealing_turn ? iso.turn_cards
                         : iso.river_cards[static_cast<std::size_t>(suit_of(context.turn))];
        for (const Card card : skipped) {
            left &= ~card_bit(card);
        }
    }
    for (Card card = 0; card < card_count; ++card) {
        if ((left & card_bit(card)) != 0) {
            candidates.actions.push_back({ActionKind::chance, card});
        }
    }
}

ActionPlan::PlanChild ActionPlan::child_of(const PlanNode& node, const BuildContext& context,
                                           Action action) const {
    const Seat me = node.seat;
    const std::size_t mine = index_of(me);
    PlanChild child{context, {}};
    BuildContext& next = child.context;
    PlanNode& to = child.node;
    to.street = node.street;
    to.matched = node.matched;
    next.last_step = action.kind;
    if (action.kind == ActionKind::chance) {
        const auto card = static_cast<Card>(action.amount);
        const bool dealing_turn = context.turn == NO_CARD;
        (dealing_turn ? next.turn : next.river) = card;
        next.dead_cards |= card_bit(card);
        to.kind = node.kind == NodeKind::Chance ? NodeKind::Decision : NodeKind::Terminal;
        to.runout_pending = node.runout_pending && dealing_turn;
        to.street = dealing_turn ? Street::Turn : Street::River;
    } else {
        next.last_bet_action = action.kind;
        next.last_actor = me;
        next.last_aggressor = Seat::OOP;
    }

    const bool river = node.street == Street::River;
    switch (action.kind) {
        case ActionKind::none:
        case ActionKind::chance:
            break;
        case ActionKind::fold:
            to.kind = NodeKind::Terminal;
            to.seat = me;
            break;
        case ActionKind::check:
            if (me == Seat::OOP) {
                to.seat = Seat::IP;
            } else if (river) {
                to.kind = NodeKind::Terminal;
            } else {
                to.kind = NodeKind::Chance;
                to.street = next_street(node.street);
            }
            break;
        case ActionKind::call:
            next.stack[mine] -= action.amount;
            next.pot += action.amount;
            next.contributed[mine] += action.amount;
            next.street_bet = 0;
            next.raises_this_street = 0;
            next.last_aggressor = other(me);
            to.matched += action.amount;
            if (river) {
                to.kind = NodeKind::Terminal;
                break;
            }
            to.street = next_street(node.street);
            if (context.all_in || next.stack[0] < 1 || next.stack[1] < 1) {
                next.all_in = true;
                to.kind = NodeKind::Terminal;
                to.runout_pending = true;
            } else {
                to.kind = NodeKind::Chance;
            }
            break;
        case ActionKind::bet:
        case ActionKind::raise:
        case ActionKind::allin:
            make_wager(child, node, context, action);
            break;
    }
    to.pot = next.pot;
    to.contributed = next.contributed;
    to.last_action = next.last_bet_action;
    to.last_actor = next.last_actor;
    to.turn = next.turn;
    to.river = next.river;
    return child;
}

void ActionPlan::make_wager(PlanChild& child, const PlanNode& node, const BuildContext& context,
                            Action action) {
    const std::size_t mine = index_of(node.seat);
    const std::int32_t stack = context.stack[mine];
    const std::int32_t to_call = stack - context.stack[1 - mine];
    const std::int32_t call_part = std::max(0, std::min(to_call, stack));
    const std::int32_t raise_part = std::max(0, action.amount - context.street_bet);
    const std::int32_t chips = std::min(raise_part + call_part, stack);
    BuildContext& next = child.context;
    next.stack[mine] -= chips;
    next.pot += chips;
    next.contributed[mine] += chips;
    next.street_bet = action.amount;
    ++next.raises_this_street;
    next.all_in = action.kind == ActionKind::allin;
    child.node.seat = other(node.seat);
    child.node.matched += call_part;
}

}  // namespace kestrel
