#include "app/run_state.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace tidewell {
namespace {

using enum RunEvent;

const std::vector<RunEvent> events = {Start, Fits, Cancel, Discard, End, BeginFile, EndFile};

TEST(RunState, WhatMayFollowWhat) {
    // How it is reached, whether that is a solve that runs, and where each event leads from there;
    // a dash where it has no place.
    const std::tuple<std::vector<RunEvent>, Activity, bool, std::string> cases[] = {
        //                                           Start Fits Cancel Discard End Begin EndFile
        {{}, Activity::Idle, false, /*           */ "C - - - - F -"},
        {{Start}, Activity::Checking, true, /*   */ "- S I I I - -"},
        {{Start, Fits}, Activity::Solving, true, "- - X D I - -"},
        {{Start, Fits, Cancel}, Activity::Cancelling, true, "- - - D I - -"},
        {{Start, Fits, Discard}, Activity::Discarding, true, "- - - - I - -"},
        {{Start, Fits, Cancel, Discard}, Activity::Discarding, true, "- - - - I - -"},
        {{BeginFile}, Activity::File, false, "- - - - - - I"},
        {{Start, Fits, Cancel, End}, Activity::Idle, false, "C - - - - F -"}};
    const std::string letters = "ICSXDF";  // in the order of the activities
    for (const auto& [path, activity, running, row] : cases) {
        RunState state;
        for (const RunEvent event : path)
            ASSERT_TRUE(state.take(event));
        EXPECT_EQ(state.now(), activity);
        EXPECT_EQ(state.running(), running);
        for (std::size_t e = 0; e < events.size(); ++e) {
            RunState next = state;
            const char expected = row[2 * e];
            EXPECT_EQ(next.take(events[e]), expected != '-') << row << " event " << e;
            const auto to = expected == '-' ? activity : Activity(letters.find(expected));
            EXPECT_EQ(next.now(), to) << row << " event " << e;
        }
    }
}

}  // namespace
}  // namespace tidewell
