#include "engine/game/betting_rules.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "engine/game/legal_actions.h"

namespace kestrel {
namespace {

Street next_street(Street street) {
    return street == Street::Flop ? Street::Turn : Street::River;
}

bool is_bet_open(const HandState& state) {
    return state.last_step != ActionKind::none && state.last_step != ActionKind::check &&
           state.last_step != ActionKind::chance;
}

bool counts_raises(const std::vector<SizeToken>& raises) {
    return std::ranges::any_of(raises, [](const SizeToken& size) { return size.raise_cap > 0; });
}

void make_wager(PlanStep& child, const PlanStep& step, Action action) {
    const PlanNode& node = step.node;
    const HandState& state = step.state;
    const std::size_t mine = index_of(node.seat);
    const std::int32_t stack = state.stack[mine];
    const std::int32_t to_call = stack - state.stack[1 - mine];
    const std::int32_t call_part = std::max(0, std::min(to_call, stack));
    const std::int32_t raise_part = std::max(0, action.amount - state.street_bet);
    const std::int32_t chips = std::min(raise_part + call_part, stack);
    HandState& next = child.state;
    next.stack[mine] -= chips;
    next.pot += chips;
    next.contributed[mine] += chips;
    next.street_bet = action.amount;
    ++next.raises_this_street;
    next.all_in = action.kind == ActionKind::allin;
    child.node.seat = other(node.seat);
    child.node.matched += call_part;
}

void make_deal(PlanStep& child, const PlanStep& step, Card card) {
    const bool dealing_turn = step.state.turn == NO_CARD;
    (dealing_turn ? child.state.turn : child.state.river) = card;
    child.state.dead_cards |= card_bit(card);
    child.node.kind = step.node.kind == NodeKind::Chance ? NodeKind::Decision : NodeKind::Terminal;
    child.node.runout_pending = step.node.runout_pending && dealing_turn;
    child.node.street = dealing_turn ? Street::Turn : Street::River;
}

void make_check(PlanStep& child, const PlanStep& step) {
    if (step.node.seat == Seat::OOP) {
        child.node.seat = Seat::IP;
    } else if (step.node.street == Street::River) {
        child.node.kind = NodeKind::Terminal;
    } else {
        child.node.kind = NodeKind::Chance;
        child.node.street = next_street(step.node.street);
    }
}

void make_call(PlanStep& child, const PlanStep& step, std::int32_t amount) {
    PlanNode& to = child.node;
    HandState& next = child.state;
    const std::size_t caller = index_of(step.node.seat);
    next.stack[caller] -= amount;
    next.pot += amount;
    next.contributed[caller] += amount;
    next.street_bet = 0;
    next.raises_this_street = 0;
    next.last_aggressor = other(step.node.seat);
    to.matched += amount;
    if (step.node.street == Street::River) {
        to.kind = NodeKind::Terminal;
        return;
    }
    to.street = next_street(step.node.street);
    if (step.state.all_in || next.stack[0] < 1 || next.stack[1] < 1) {
        next.all_in = true;
        to.kind = NodeKind::Terminal;
        to.runout_pending = true;
    } else {
        to.kind = NodeKind::Chance;
    }
}

}  // namespace

BettingRules::BettingRules(const PlanOptions& options, const Board& board,
                           const SuitIsomorphism* isomorphism)
    : options_(options), board_(board), isomorphism_(isomorphism) {
    for (const Street street : {Street::Flop, Street::Turn, Street::River}) {
        const StreetSizing& sizes = sizing(street);
        counts_raises_[static_cast<std::size_t>(street)] =
            counts_raises(sizes.oop_raises) || counts_raises(sizes.ip_raises);
    }
}

PlanStep BettingRules::root() const {
    PlanStep root;
    root.state.stack = {options_.effective_stack, options_.effective_stack};
    root.state.pot = options_.starting_pot;
    for (const Card card : board_) {
        root.state.dead_cards |= card_bit(card);
    }
    root.state.turn = board_[3];
    root.state.river = board_[4];
    root.node.street = options_.starting_street;
    root.node.pot = options_.starting_pot;
    root.node.turn = root.state.turn;
    root.node.river = root.state.river;
    return root;
}

void BettingRules::list_actions(const PlanStep& step, Buffers& buffers) const {
    buffers.actions.clear();
    if (step.node.kind == NodeKind::Decision) {
        list_decision(step, buffers);
    } else if (!step.is_end()) {
        list_deal(step.state, buffers.actions);
    }
}

BettingKey BettingRules::key_of(const PlanStep& step) const {
    const HandState& state = step.state;
    BettingKey key;
    key.stack = state.stack;
    key.matched = step.node.matched;
    key.street_bet = state.street_bet;
    key.raises_this_street =
        counts_raises_[static_cast<std::size_t>(step.node.street)] ? state.raises_this_street : 0;
    key.cards_to_come = static_cast<std::uint8_t>(state.cards_to_come());
    key.street = step.node.street;
    key.seat = step.node.seat;
    key.bet_open = is_bet_open(state);
    key.all_in = state.all_in;
    key.donk_spot = is_donk_spot(step);
    return key;
}

const StreetSizing& BettingRules::sizing(Street street) const {
    switch (street) {
        case Street::Flop:
            return options_.flop;
        case Street::Turn:
            return options_.turn;
        case Street::River:
            return options_.river;
    }
    throw std::logic_error("Unknown street");
}

bool BettingRules::is_donk_spot(const PlanStep& step) const {
    if (step.node.seat != Seat::OOP || !sizing(step.node.street).donk_sizes) {
        return false;
    }
    // Leading into the player who had the betting lead; the first action of the hand counts as it.
    const HandState& state = step.state;
    return (state.last_step == ActionKind::none && step.node.street == options_.starting_street) ||
           (state.last_step == ActionKind::chance && state.last_aggressor == Seat::IP);
}

void BettingRules::list_decision(const PlanStep& step, Buffers& buffers) const {
    const PlanNode& node = step.node;
    const HandState& state = step.state;
    const Seat me = node.seat;
    const std::size_t mine = index_of(me);
    const std::size_t theirs = index_of(other(me));
    const StreetSizing& sizes = sizing(node.street);

    const std::int32_t to_call = state.stack[mine] - state.stack[theirs];
    SizeContext size;
    size.pot_after_call = options_.starting_pot + 2 * (node.matched + to_call);
    size.street_bet = state.street_bet;
    size.max_raise_to = state.street_bet + state.stack[theirs];
    size.min_raise_to = std::max(1, state.street_bet + std::min(to_call, state.stack[theirs]));
    size.streets_left = 3 - static_cast<std::int32_t>(node.street);
    size.stack_to_pot = size.pot_after_call > 0
                            ? static_cast<double>(state.stack[theirs]) / size.pot_after_call
                            : 0.0;

    const bool donk_spot = is_donk_spot(step);
    LegalActions list(size, buffers.actions);
    if (donk_spot || !is_bet_open(state)) {
        list.add(ActionKind::check, 0);
        list.add_bets(donk_spot         ? *sizes.donk_sizes
                      : me == Seat::OOP ? sizes.oop_bets
                                        : sizes.ip_bets);
    } else {
        list.add(ActionKind::fold, 0);
        list.add(ActionKind::call, std::max(0, std::min(to_call, state.stack[mine])));
        if (!state.all_in) {
            list.add_raises(me == Seat::OOP ? sizes.oop_raises : sizes.ip_raises,
                            state.raises_this_street);
        }
    }
    const double jam = options_.jam_threshold[mine];
    if (!state.all_in && jam > 0 && size.max_raise_to >= 1 &&
        size.max_raise_to <= std::round(size.pot_after_call * jam)) {
        list.add_jam();
    }
    list.round_to_all_in(state.pot, options_.all_in_threshold);
    list.order(buffers.wagers);
    list.merge(options_.merge_threshold);
}

void BettingRules::list_deal(const HandState& state, std::vector<Action>& actions) const {
    const bool dealing_turn = state.turn == NO_CARD;
    if (!dealing_turn && state.river != NO_CARD) {
        return;
    }
    const Card fixed = dealing_turn ? board_[3] : board_[4];
    CardMask left = fixed == NO_CARD ? (CardMask{1} << card_count) - 1 : card_bit(fixed);
    left &= ~state.dead_cards;
    if (fixed == NO_CARD && isomorphism_ != nullptr) {
        const SuitIsomorphism& iso = *isomorphism_;
        const std::vector<Card>& skipped =
            dealing_turn ? iso.turn_cards
                         : iso.river_cards[static_cast<std::size_t>(suit_of(state.turn))];
        for (const Card card : skipped) {
            left &= ~card_bit(card);
        }
    }
    for (Card card = 0; card < card_count; ++card) {
        if ((left & card_bit(card)) != 0) {
            actions.push_back({ActionKind::chance, card});
        }
    }
}

PlanStep BettingRules::child_of(const PlanStep& step, Action action) const {
    const PlanNode& node = step.node;
    const Seat me = node.seat;
    PlanStep child{{}, step.state};
    HandState& next = child.state;
    PlanNode& to = child.node;
    to.street = node.street;
    to.matched = node.matched;
    next.last_step = action.kind;
    if (action.kind != ActionKind::chance) {
        next.last_bet_action = action.kind;
        next.last_actor = me;
        next.last_aggressor = Seat::OOP;
    }
    switch (action.kind) {
        case ActionKind::none:
            break;
        case ActionKind::chance:
            make_deal(child, step, static_cast<Card>(action.amount));
            break;
        case ActionKind::fold:
            to.kind = NodeKind::Terminal;
            to.seat = me;
            break;
        case ActionKind::check:
            make_check(child, step);
            break;
        case ActionKind::call:
            make_call(child, step, action.amount);
            break;
        case ActionKind::bet:
        case ActionKind::raise:
        case ActionKind::allin:
            make_wager(child, step, action);
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

}  // namespace kestrel
