#include "session/signature.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "engine/solver/discounted_cfr.h"
#include "session/solve_config.h"

namespace kestrel_app {
namespace {

using kestrel::Game;
using kestrel::NodeKind;

class Fnv1a {
  public:
    template <class T>
    void add(std::span<T> values) {
        for (const std::byte byte : std::as_bytes(values)) {
            hash_ = (hash_ ^ std::to_integer<std::uint64_t>(byte)) * prime;
        }
    }
    std::uint64_t value() const { return hash_; }

  private:
    static constexpr std::uint64_t prime = 0x100000001b3;
    std::uint64_t hash_ = 0xcbf29ce484222325;
};

/// A lock of the suite: the first `hands` hands of the `nth` decision of the tree always take the
/// last action, every other hand stays free.
struct Lock {
    std::size_t nth;
    std::size_t hands;
};

struct Spot {
    SolveConfig config;
    std::vector<Lock> locks;
};

constexpr std::size_t all_hands = 1326;

SolveConfig config_of(const char* board, const char* street, const char* oop, const char* ip,
                      std::uint32_t pot, std::uint32_t stack, const StreetSizingText& sizing,
                      std::uint32_t iterations) {
    SolveConfig config;
    config.board = board;
    config.starting_street = street;
    config.oop_range = oop;
    config.ip_range = ip;
    config.starting_pot = pot;
    config.effective_stack = stack;
    config.max_iterations = iterations;
    config.oop_flop = config.oop_turn = config.oop_river = sizing;
    config.ip_flop = config.ip_turn = config.ip_river = sizing;
    return config;
}

/// Together the spots reach every street to start on, rake and none, all-ins with one and two cards
/// to come, exchangeable suits on turn and river, a lead that is forbidden, locks, and packed rows.
std::vector<Spot> suite() {
    std::vector<Spot> spots;

    SolveConfig river =
        config_of("AhKd7c4s2h", "river", "100%", "22+,A2s+,K2s+,Q5s+,J7s+,A7o+,KTo+", 2000, 9000,
                  {"33, 75, 150", "50, 3x", true, false}, 40);
    spots.push_back({river, {}});
    river.rake_percent = 5.0;
    river.rake_cap = 300.0;
    spots.push_back({river, {{1, 150}, {3, all_hands}}});
    river.compress = true;
    spots.push_back({river, {{0, 20}}});

    SolveConfig turn = config_of(
        "QsJs8s2s", "turn", "22+,A2s+,K2s+,Q4s+,J7s+,T7s+,97s+,86s+,76s,65s,A2o+,K8o+,Q9o+,JTo",
        "JJ-22,AJs-A2s,K5s+,Q8s+,J8s+:0.75,T8s+,97s+,87s,A7o+,KTo+,QJo", 1000, 2500,
        {"60", "60", true, true}, 12);
    spots.push_back({turn, {}});
    turn.rake_percent = 4.0;
    turn.ip_turn.add_all_in = false;
    turn.oop_turn.dont_donk = false;
    spots.push_back({turn, {{2, 60}}});

    SolveConfig flop = config_of("9h8h2c", "flop", "TT,99,AhKh,A5s,76s,QhJh", "88,22,JTs,AKo,KhQh",
                                 600, 900, {"75", "", false, true}, 6);
    spots.push_back({flop, {}});
    flop.rake_percent = 5.0;
    flop.rake_cap = 100.0;
    flop.oop_flop.add_all_in = flop.ip_flop.add_all_in = true;
    flop.compress = true;
    spots.push_back({flop, {}});
    return spots;
}

void apply_lock(Game& game, const Lock& lock) {
    std::size_t decisions = 0;
    for (std::size_t i = 0; i < game.nodes.size(); ++i) {
        const kestrel::GameNode& node = game.nodes[i];
        if (node.kind != NodeKind::Decision || decisions++ != lock.nth) {
            continue;
        }
        const std::size_t hands = game.cards.pockets[index_of(node.seat)].size();
        const std::size_t actions = node.actions.size();
        std::vector<float> table(actions * hands, -1.0F);
        for (std::size_t a = 0; a < actions; ++a) {
            for (std::size_t h = 0; h < std::min(hands, lock.hands); ++h) {
                table[a * hands + h] = a + 1 == actions ? 1.0F : 0.0F;
            }
        }
        game.set_node_lock(i, std::move(table));
        return;
    }
}

void add_states(Fnv1a& hash, const kestrel::StateTable& states) {
    for (std::size_t i = 0; i < states.size(); ++i) {
        const kestrel::NodeState& state = states[i];
        if (!state.active) {
            continue;
        }
        if (state.packed) {
            hash.add(state.regrets_packed());
            hash.add(state.strategy_sum_packed());
            const std::array<float, 2> scales = {state.regrets_scale, state.strategy_sum_scale};
            hash.add(std::span<const float>(scales));
        } else {
            hash.add(state.regrets());
            hash.add(state.strategy_sum());
        }
    }
}

}  // namespace

std::uint64_t solver_signature(std::size_t threads) {
    Fnv1a hash;
    for (const Spot& spot : suite()) {
        SpotInputs inputs = parse_spot(spot.config);
        Game game(std::move(inputs.options), kestrel::CardContext(inputs.board, inputs.ranges));
        for (const Lock& lock : spot.locks) {
            apply_lock(game, lock);
        }
        kestrel::CfrOptions options;
        options.max_iterations = spot.config.max_iterations;
        options.compress = spot.config.compress;
        options.threads = threads;
        kestrel::DiscountedCfr solver(std::move(options));
        solver.run(game);
        add_states(hash, solver.states);
    }
    return hash.value();
}

std::string signature_text(std::uint64_t hash) {
    std::string text(16, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, hash >>= 4) {
        *digit = "0123456789abcdef"[hash & 15];
    }
    return text;
}

}  // namespace kestrel_app
