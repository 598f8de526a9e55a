#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/cli/support.h"

// What a solve is said to need against what its process really takes.

namespace tidewell_cli {
namespace {

using nlohmann::json;

std::string spot_of(const char* board, const char* bets, const char* raises, int stack = 0,
                    const char* oop = nullptr, const char* ip = nullptr) {
    json spot = json::parse(river_spot);
    spot["board"] = board;
    for (const char* const seat : {"oop", "ip"}) {
        for (const char* const street : {"flop", "turn", "river"}) {
            const std::string prefix = std::string(seat) + '_' + street;
            spot[prefix + "_bet_sizes"] = bets;
            spot[prefix + "_raise_sizes"] = raises;
        }
    }
    if (stack > 0) {
        spot["effective_stack"] = stack;
        spot["oop_range"] = oop;
        spot["ip_range"] = ip;
    }
    return spot.dump();
}

TEST(PeakMemory, StaysWithinATenthAndTheProgramsOwn) {
    const Folder folder;
    const std::pair<const char*, std::string> spots[] = {
        {"river", river_spot},
        {"turn", spot_of("AhKd7c4s", "33, 75", "60")},
        {"small flop", spot_of("AhKd7c", "100", "60")},
        {"flop", spot_of("AhKd7c", "50", "60")},
        // Many nodes with little at each, and a street whose lines are all walked at once.
        {"one hand a seat", spot_of("AhKd7c4s", "33,66,100", "50,100,200", 1300, "QsQc", "JsJd")},
        {"large river", spot_of("AhKd7c4s2d", "25,33,50,66,100,150", "33,50,66,100", 1200,
                                "22+,A2s+", "22+,A2s+")},
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
