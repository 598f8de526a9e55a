#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/cli/support.h"

// What a solve is said to need against what its process really takes.

namespace tidewell_cli {
namespace {

using nlohmann::json;

std::string flop_spot(const std::string& bets) {
    json spot = json::parse(river_spot);
    spot["board"] = "AhKd7c";
    for (const char* const seat : {"oop", "ip"}) {
        for (const char* const street : {"flop", "turn", "river"}) {
            const std::string prefix = std::string(seat) + '_' + street;
            spot[prefix + "_bet_sizes"] = bets;
            spot[prefix + "_raise_sizes"] = "60";
        }
    }
    return spot.dump();
}

TEST(PeakMemory, StaysWithinATenthAndTheProgramsOwn) {
    const Folder folder;
    json turn = json::parse(river_spot);
    turn["board"] = "AhKd7c4s";
    turn["oop_turn_bet_sizes"] = turn["ip_turn_bet_sizes"] = "33, 75";
    const std::pair<std::string, std::string> spots[] = {{"river", river_spot},
                                                         {"turn", turn.dump()},
                                                         {"small flop", flop_spot("100")},
                                                         {"flop", flop_spot("50")},
                                                         {"quick solve", ""}};
    for (const auto& [name, text] : spots) {
        SCOPED_TRACE(name);
        std::vector<std::string> arguments = {"--json", "-", "--iterations", "2"};
        if (!text.empty()) {
            arguments.push_back(folder.write("spot.json", text));
        }
        const RunResult result = run(arguments);
        ASSERT_EQ(result.exit_code, 0) << result.err;
        const json report = json::parse(result.out);
        const auto estimate = report["estimate_bytes"].get<double>();
        const auto peak = report["peak_rss_bytes"].get<double>();
        EXPECT_LE(peak, 1.1 * estimate + 150e6);
        if (estimate > 300e6) {  // and the estimate is no mere upper bound
            EXPECT_GE(peak, 0.8 * estimate);
        }
    }
}

}  // namespace
}  // namespace tidewell_cli
