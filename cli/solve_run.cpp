#include "cli/solve_run.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <optional>
#include <span>
#include <utility>

#include "cli/format.h"
#include "cli/input_error.h"
#include "cli/memory_info.h"
#include "session/action_names.h"

namespace tidewell_cli {
namespace {

using kestrel::DiscountedCfr;
using kestrel::Game;
using kestrel::GameNode;
using kestrel::NodeKind;

double usable(double number) {
    return std::isfinite(number) && number > 0.0 ? number : 0.0;
}

/// Scales to a sum of 1; uniform without any positive number.
void normalise(std::vector<double>& shares) {
    double sum = 0;
    for (double& share : shares) {
        sum += share = usable(share);
    }
    for (double& share : shares) {
        share = sum > 0 ? share / sum : 1.0 / static_cast<double>(shares.size());
    }
}

/// For each hand of the node's seat, its range weight times the chance that the seat plays along
/// the path; 0 for a hand that the node's board blocks.
std::vector<double> own_reach(const Game& game, const DiscountedCfr& solver, const NodePath& path) {
    const GameNode& node = game.nodes[path.node];
    const std::size_t seat = index_of(node.seat);
    const std::vector<float>& weights = game.cards.pocket_weights[seat];
    std::vector<double> reach(weights.begin(), weights.end());
    const kestrel::CardMask dealt = kestrel::card_bit(node.turn) | kestrel::card_bit(node.river);
    for (std::size_t h = 0; h < reach.size(); ++h) {
        if (kestrel::pocket_mask(game.cards.pockets[seat][h]) & dealt) {
            reach[h] = 0;
        }
    }
    for (const LineStep& step : path.steps) {
        const GameNode& passed = game.nodes[step.node];
        if (passed.kind != NodeKind::Decision || passed.seat != node.seat) {
            continue;
        }
        const std::vector<float> strategy = solver.average_strategy(step.node);
        const auto row = std::span(strategy).subspan(step.action * reach.size(), reach.size());
        for (std::size_t h = 0; h < reach.size(); ++h) {
            reach[h] *= usable(static_cast<double>(row[h]));
        }
    }
    return reach;
}

double median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace

double seconds_since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double SolveReport::exploitability_percent() const {
    return 100.0 * exploitability / config.starting_pot;
}

BuiltSpot build_spot(const kestrel_app::SolveConfig& config) {
    BuiltSpot spot;
    spot.config = config;
    spot.available_bytes = available_memory();
    // What ran out, and how much of it there was at least.
    std::string part = "the card tables";
    std::uint64_t resident_before = peak_resident_bytes();
    try {
        kestrel_app::SpotInputs inputs = kestrel_app::parse_spot(config);
        std::optional<AllocationLimit> limit;
        if (spot.available_bytes) {
            limit.emplace(*spot.available_bytes);
        }
        const auto cards_start = Clock::now();
        kestrel::CardContext cards(inputs.board, inputs.ranges);
        spot.seconds.card_context = seconds_since(cards_start);

        part = "the betting tree";
        resident_before = peak_resident_bytes();
        const auto tree_start = Clock::now();
        spot.game = std::make_unique<Game>(std::move(inputs.options), std::move(cards));
        spot.seconds.tree = seconds_since(tree_start);
    } catch (const std::bad_alloc&) {
        const std::uint64_t taken = peak_resident_bytes() - resident_before;
        const std::string ran_out =
            " ran out " + (taken > 0 ? "after " + bytes(taken) + " of " : "in ") + part;
        throw MemoryRefused("not enough memory: " +
                            (spot.available_bytes
                                 ? "the solve needs more than the " + bytes(*spot.available_bytes) +
                                       " available, which" + ran_out
                                 : "it" + ran_out));
    } catch (const std::invalid_argument& error) {
        throw InputError(error.what());
    } catch (const std::out_of_range& error) {
        throw InputError(error.what());
    }
    spot.estimate =
        kestrel_app::estimate_solve_memory(spot.game->cards, spot.game->plan, config.compress);
    return spot;
}

NodeReport report_node(const Game& game, const DiscountedCfr& solver, const NodePath& path) {
    const GameNode& node = game.nodes[path.node];
    const std::int32_t pot = kestrel_app::naming_pot(game, path.node);
    NodeReport report;
    report.index = path.node;
    report.line = line_of(game, path);
    report.pot = node.pot;
    report.street = node.street;

    const std::vector<float> means = solver.action_frequencies(path.node);
    std::vector<double> frequencies(node.actions.size(), 0.0);
    std::copy_n(means.begin(), std::min(means.size(), frequencies.size()), frequencies.begin());
    normalise(frequencies);
    for (std::size_t a = 0; a < node.actions.size(); ++a) {
        report.actions.push_back({kestrel_app::action_display_name(node.actions[a], pot),
                                  kestrel_app::action_type_name(node.actions[a], pot),
                                  frequencies[a], node.children[a]});
    }
    if (node.kind != NodeKind::Decision) {
        return report;
    }

    report.player = node.seat == kestrel::Seat::OOP ? "OOP" : "IP";
    const std::vector<kestrel::Pocket>& pockets = game.cards.pockets[index_of(node.seat)];
    const std::vector<double> reach = own_reach(game, solver, path);
    const std::vector<float> strategy = solver.average_strategy(path.node);
    for (std::size_t h = 0; h < pockets.size(); ++h) {
        ComboReport combo{pockets[h], reach[h], {}};
        for (std::size_t a = 0; a < node.actions.size(); ++a) {
            combo.probs.push_back(static_cast<double>(strategy[a * pockets.size() + h]));
        }
        normalise(combo.probs);
        report.combos.push_back(std::move(combo));
    }
    return report;
}

SolveReport solve_spot(const BuiltSpot& spot, const NodePath& path, InterruptGuard& interrupt,
                       const IterationCallback& on_iteration) {
    const std::uint64_t need = spot.estimate.total_bytes;
    if (spot.available_bytes && *spot.available_bytes <= need) {
        throw MemoryRefused("not enough memory: the solve needs " + bytes(need) + ", " +
                            bytes(*spot.available_bytes) + " are available");
    }

    SolveReport report;
    report.config = spot.config;
    report.estimate = spot.estimate;
    report.seconds = spot.seconds;

    std::vector<double> plain_iterations;  // milliseconds
    auto run_start = Clock::now();
    auto iterations_start = run_start;
    bool prepared = false;

    kestrel::CfrOptions options;
    options.max_iterations = spot.config.max_iterations;
    options.target_exploitability = spot.config.target_exploitability;
    options.exploitability_interval = measuring_interval;
    options.compress = spot.config.compress;
    options.threads = spot.config.thread_count;
    options.should_stop = [&] {
        // First asked when the states are ready.
        if (!std::exchange(prepared, true)) {
            iterations_start = Clock::now();
        }
        return interrupt.interrupted();
    };
    options.progress = [&, measuring = options](std::uint32_t iteration, float exploitability,
                                                double milliseconds) {
        const bool measured = kestrel::measures_at(measuring, iteration);
        const auto amount = static_cast<double>(exploitability);
        if (measured) {
            report.trace.push_back({iteration, amount});
        } else {
            plain_iterations.push_back(milliseconds);
        }
        on_iteration(iteration, amount, measured);
    };

    interrupt.defer();
    DiscountedCfr solver(std::move(options));
    run_start = Clock::now();
    solver.run(*spot.game);
    report.seconds.prepare = std::chrono::duration<double>(iterations_start - run_start).count();
    report.seconds.solve = seconds_since(iterations_start);
    if (interrupt.interrupted()) {
        throw Interrupted("interrupted after " + std::to_string(solver.iterations_completed) +
                          " iterations");
    }

    report.iterations = solver.iterations_completed;
    report.exploitability = static_cast<double>(solver.exploitability);
    report.iteration_ms = median(std::move(plain_iterations));
    const std::array<float, 2> ev = solver.current_ev(*spot.game);
    report.ev = {static_cast<double>(ev[0]), static_cast<double>(ev[1])};
    report.node = report_node(*spot.game, solver, path);
    report.peak_resident_bytes = peak_resident_bytes();
    interrupt.stop_deferring();
    if (interrupt.interrupted()) {
        throw Interrupted("interrupted");
    }
    return report;
}

}  // namespace tidewell_cli
