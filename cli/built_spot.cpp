#include "cli/built_spot.h"

#include <new>
#include <string>
#include <utility>

#include "cli/format.h"
#include "cli/input_error.h"
#include "platform/memory_info.h"

namespace tidewell_cli {

using kestrel::Game;

namespace {

/// Runs `act` with failures as what they mean to the user.
template <class Act>
void told(const BuiltSpot& spot, Act act) {
    try {
        act();
    } catch (const kestrel::TreeTooLarge&) {
        throw MemoryRefused("not enough memory: the betting tree alone takes more than the " +
                            bytes(*spot.available_bytes) + " available");
    } catch (const std::bad_alloc&) {
        throw MemoryRefused("not enough memory: it ran out as the betting tree was built");
    } catch (const std::invalid_argument& error) {
        throw InputError(error.what());
    } catch (const std::out_of_range& error) {
        throw InputError(error.what());
    }
}

}  // namespace

BuiltSpot estimate_spot(const kestrel_app::SolveConfig& config) {
    BuiltSpot spot;
    spot.config = config;
    spot.available_bytes = tidewell_platform::available_memory();
    told(spot, [&] {
        spot.inputs = kestrel_app::parse_spot(config);
        kestrel_app::EstimateLimits limits;
        if (spot.available_bytes) {
            limits.budget_bytes =
                2 * *spot.available_bytes;  // by how much it misses is of interest
        }
        spot.estimate = kestrel_app::estimate_solve_memory(spot.inputs, config, limits);
    });
    return spot;
}

void check_memory(const BuiltSpot& spot) {
    const kestrel_app::SolveMemoryEstimate& estimate = spot.estimate;
    if (spot.available_bytes &&
        (estimate.at_least || *spot.available_bytes <= estimate.total_bytes)) {
        throw MemoryRefused("not enough memory: the solve needs " +
                            std::string(estimate.at_least ? "more than " : "") +
                            bytes(estimate.total_bytes) + ", " + bytes(*spot.available_bytes) +
                            " are available");
    }
}

void build_spot(BuiltSpot& spot) {
    told(spot, [&] {
        const auto cards_start = Clock::now();
        spot.cards.emplace(spot.inputs.board, spot.inputs.ranges);
        spot.seconds.card_context = seconds_since(cards_start);

        kestrel::TreeLimits limits;
        if (spot.available_bytes) {
            limits.most_bytes = *spot.available_bytes;
        }
        const auto tree_start = Clock::now();
        spot.game = std::make_unique<Game>(spot.inputs.options, *spot.cards, limits);
        spot.seconds.tree = seconds_since(tree_start);
    });
}

}  // namespace tidewell_cli
