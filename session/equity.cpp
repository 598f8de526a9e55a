#include "session/equity.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/poker/evaluator.h"

namespace kestrel_app {
namespace {

using kestrel::Card;
using kestrel::card_bit;
using kestrel::CardMask;
using kestrel::NO_CARD;
using kestrel::Pocket;
using kestrel::pocket_mask;
using kestrel::SuitLanes;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

double usable(double weight) {
    return std::isfinite(weight) && weight > 0.0 ? weight : 0.0;
}

/// Two draws as one number in [0, 1], a multiple of 2^-64 rounded to 53 bits.
double uniform01(std::mt19937& generator) {
    const auto low = static_cast<double>(generator());
    const auto high = static_cast<double>(generator());
    return (low + high * 0x1p32) * 0x1p-64;
}

/// A number below `range`, each as likely as the others. Source: Lemire, "Fast Random Integer
/// Generation in an Interval" (2019).
std::uint32_t uniform_below(std::mt19937& generator, std::uint32_t range) {
    const auto draw = [&] {
        return std::uint64_t{static_cast<std::uint32_t>(generator())} * range;
    };
    std::uint64_t product = draw();
    if (static_cast<std::uint32_t>(product) < range) {
        const std::uint32_t threshold = (0U - range) % range;
        while (static_cast<std::uint32_t>(product) < threshold) {
            product = draw();
        }
    }
    return static_cast<std::uint32_t>(product >> 32);
}

/// Draws positions in proportion to their weights.
class WeightedDraw {
  public:
    explicit WeightedDraw(std::span<const double> weights) {
        double total = 0;
        for (const double weight : weights) {
            sums_.push_back(total += usable(weight));
        }
    }

    bool possible() const { return !sums_.empty() && sums_.back() > 0; }

    std::size_t operator()(std::mt19937& generator) const {
        const double u = uniform01(generator) * sums_.back();
        const auto found = std::ranges::lower_bound(sums_, u);
        return std::min<std::size_t>(static_cast<std::size_t>(found - sums_.begin()),
                                     sums_.size() - 1);
    }

  private:
    std::vector<double> sums_;
};

/// A board as it fills: its cards as a set and in the evaluator's form.
struct DealtBoard {
    CardMask mask = 0;
    SuitLanes lanes = 0;

    void add(Card card) {
        if (card != NO_CARD) {
            mask |= card_bit(card);
            lanes |= kestrel::suit_lanes(card);
        }
    }
};

DealtBoard dealt_board(std::span<const Card> flop, Card turn, Card river) {
    DealtBoard board;
    for (const Card card : flop) {
        board.add(card);
    }
    board.add(turn);
    board.add(river);
    return board;
}

kestrel::HandStrength strength_of(const Pocket& pocket, const DealtBoard& board) {
    return kestrel::evaluate_lanes(board.lanes | kestrel::suit_lanes(pocket.low) |
                                   kestrel::suit_lanes(pocket.high));
}

/// The cards that are not in a set, rising.
std::vector<Card> deck_without(CardMask mask) {
    std::vector<Card> deck;
    for (Card card = 0; card < kestrel::card_count; ++card) {
        if ((mask & card_bit(card)) == 0) {
            deck.push_back(card);
        }
    }
    return deck;
}

/// Compared hands and how they went.
struct Tally {
    std::size_t hits = 0;
    std::size_t wins = 0;
    std::size_t ties = 0;

    void count(kestrel::HandStrength hero, kestrel::HandStrength opponent) {
        ++hits;
        wins += hero > opponent ? 1 : 0;
        ties += hero == opponent ? 1 : 0;
    }

    double equity() const {
        return hits == 0 ? nan
                         : (static_cast<double>(wins) + 0.5 * static_cast<double>(ties)) /
                               static_cast<double>(hits);
    }
};

}  // namespace

double exact_equity(const kestrel::CardContext& cards, kestrel::Seat seat, Card turn, Card river,
                    std::span<const double> own_weights, std::span<const double> their_weights) {
    const kestrel::ShowdownTable& table = cards.showdown_table(turn, river);
    const auto& own = table[index_of(seat)];
    const auto& theirs = table[index_of(other(seat))];
    constexpr std::size_t sentinels = 2;
    if (own.size() <= sentinels || theirs.size() <= sentinels) {
        return nan;
    }
    const auto& pockets = cards.pockets[index_of(seat)];
    const auto& their_pockets = cards.pockets[index_of(other(seat))];
    const auto alive = [](const auto& list) { return std::span(list).subspan(1, list.size() - 2); };
    double total = 0;
    double win = 0;
    double tie = 0;
    for (const kestrel::ShowdownEntry& hero : alive(own)) {
        const double weight = usable(own_weights[hero.position]);
        if (weight == 0) {
            continue;
        }
        const CardMask mask = pocket_mask(pockets[hero.position]);
        for (const kestrel::ShowdownEntry& opponent : alive(theirs)) {
            if ((mask & pocket_mask(their_pockets[opponent.position])) != 0) {
                continue;
            }
            const double pair = weight * usable(their_weights[opponent.position]);
            total += pair;
            win += hero.strength > opponent.strength ? pair : 0.0;
            tie += hero.strength == opponent.strength ? pair : 0.0;
        }
    }
    return total > 0 ? std::clamp((win + 0.5 * tie) / total, 0.0, 1.0) : nan;
}

double monte_carlo_equity(std::mt19937& generator, std::span<const Card> flop, Card turn,
                          Card river, const WeightedHands& hero, const WeightedHands& opponent,
                          std::size_t samples) {
    if (hero.pockets.size() != hero.weights.size() ||
        opponent.pockets.size() != opponent.weights.size()) {
        return nan;
    }
    const WeightedDraw draw_hero(hero.weights);
    const WeightedDraw draw_opponent(opponent.weights);
    if (!draw_hero.possible() || !draw_opponent.possible()) {
        return nan;
    }
    constexpr int most_tries = 32;
    const DealtBoard known = dealt_board(flop, turn, river);
    Tally tally;
    for (std::size_t sample = 0; sample < samples; ++sample) {
        const Pocket& own = hero.pockets[draw_hero(generator)];
        if ((pocket_mask(own) & known.mask) != 0) {
            continue;
        }
        Pocket theirs{};
        bool found = false;
        for (int i = 0; i < most_tries && !found; ++i) {
            theirs = opponent.pockets[draw_opponent(generator)];
            found = (pocket_mask(theirs) & (pocket_mask(own) | known.mask)) == 0;
        }
        // A range that the board nearly rules out is rather compared with a hand that cannot be.
        if (!found && (pocket_mask(theirs) & pocket_mask(own)) != 0) {
            continue;
        }
        DealtBoard board = known;
        CardMask taken = known.mask | pocket_mask(own) | pocket_mask(theirs);
        bool complete = true;
        for (const Card known_card : {turn, river}) {
            if (known_card != NO_CARD) {
                continue;
            }
            const std::vector<Card> deck = deck_without(taken);
            if (deck.empty()) {
                complete = false;
                break;
            }
            const Card card =
                deck[uniform_below(generator, static_cast<std::uint32_t>(deck.size()))];
            board.add(card);
            taken |= card_bit(card);
        }
        if (complete) {
            tally.count(strength_of(own, board), strength_of(theirs, board));
        }
    }
    return tally.equity();
}

std::vector<double> shared_sample_equity(std::mt19937& generator, std::span<const Card> flop,
                                         Card turn, Card river, std::span<const Pocket> heroes,
                                         const WeightedHands& opponent, std::size_t samples) {
    const WeightedDraw draw_opponent(opponent.weights);
    if (!draw_opponent.possible()) {
        return std::vector<double>(heroes.size(), nan);
    }
    constexpr int most_tries = 64;
    const DealtBoard known = dealt_board(flop, turn, river);
    const std::vector<Card> deck = deck_without(known.mask);
    const auto cards_left = static_cast<std::uint32_t>(deck.size());
    std::vector<Tally> tallies(heroes.size());
    for (std::size_t sample = 0; sample < samples; ++sample) {
        DealtBoard board = known;
        if (turn == NO_CARD) {
            const std::uint32_t first = uniform_below(generator, cards_left);
            std::uint32_t second = uniform_below(generator, cards_left - 1);
            second += second >= first ? 1 : 0;
            board.add(deck[first]);
            board.add(deck[second]);
        } else if (river == NO_CARD) {
            board.add(deck[uniform_below(generator, cards_left)]);
        }
        const Pocket* theirs = nullptr;
        for (int i = 0; i < most_tries && theirs == nullptr; ++i) {
            const Pocket& drawn = opponent.pockets[draw_opponent(generator)];
            theirs = (pocket_mask(drawn) & board.mask) == 0 ? &drawn : nullptr;
        }
        if (theirs == nullptr) {
            continue;
        }
        const kestrel::HandStrength strength = strength_of(*theirs, board);
        const CardMask blocked = board.mask | pocket_mask(*theirs);
        for (std::size_t h = 0; h < heroes.size(); ++h) {
            if ((pocket_mask(heroes[h]) & blocked) == 0) {
                tallies[h].count(strength_of(heroes[h], board), strength);
            }
        }
    }
    std::vector<double> equities;
    for (const Tally& tally : tallies) {
        equities.push_back(tally.equity());
    }
    return equities;
}

}  // namespace kestrel_app
