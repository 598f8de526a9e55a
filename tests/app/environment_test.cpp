#include "app/environment.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <utility>

TEST(Environment, FlagsAreOnForFourWords) {
    const char* const name = "TIDEWELL_TEST_FLAG";
    qunsetenv(name);
    EXPECT_FALSE(tidewell::envFlagEnabled(name));
    const std::pair<const char*, bool> cases[] = {
        {"1", true}, {"true", true}, {" TRUE ", true}, {"Yes", true},      {"on", true},
        {"", false}, {"0", false},   {"2", false},     {"enabled", false}, {"off", false}};
    for (const auto& [value, on] : cases) {
        qputenv(name, value);
        EXPECT_EQ(tidewell::envFlagEnabled(name), on) << '\'' << value << '\'';
    }
    qunsetenv(name);
}
