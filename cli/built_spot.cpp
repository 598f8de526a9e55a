#include "cli/built_spot.h"

#include <new>
#include <string>
#include <utility>

#include "cli/format.h"
#include "cli/input_error.h"
#include "platform/memory_info.h"

namespace tidewell_cli {

using kestrel::Game;

BuiltSpot build_spot(const kestrel_app::SolveConfig& config) {
    BuiltSpot spot;
    spot.config = config;
    spot.available_bytes = tidewell_platform::available_memory();
    // What ran out, and how much of it there was at least.
    std::string part = "the card tables";
    std::uint64_t resident_before = tidewell_platform::peak_resident_bytes();
    try {
        kestrel_app::SpotInputs inputs = kestrel_app::parse_spot(config);
        std::optional<tidewell_platform::AllocationLimit> limit;
        if (spot.available_bytes) {
            limit.emplace(*spot.available_bytes);
        }
        const auto cards_start = Clock::now();
        spot.cards.emplace(inputs.board, inputs.ranges);
        spot.seconds.card_context = seconds_since(cards_start);

        part = "the betting tree";
        resident_before = tidewell_platform::peak_resident_bytes();
        const auto tree_start = Clock::now();
        spot.game = std::make_unique<Game>(std::move(inputs.options), *spot.cards);
        spot.seconds.tree = seconds_since(tree_start);
    } catch (const std::bad_alloc&) {
        const std::uint64_t taken = tidewell_platform::peak_resident_bytes() - resident_before;
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

void check_memory(const BuiltSpot& spot) {
    const std::uint64_t need = spot.estimate.total_bytes;
    if (spot.available_bytes && *spot.available_bytes <= need) {
        throw MemoryRefused("not enough memory: the solve needs " + bytes(need) + ", " +
                            bytes(*spot.available_bytes) + " are available");
    }
}

}  // namespace tidewell_cli
