#include "app/memory_budget.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <tuple>
#include <utility>

#include "app/config_map.h"
#include "tests/app/controller_support.h"

namespace tidewell {
namespace {

constexpr quint64 gigabyte = quint64{1} << 30;

TEST(MemoryBudget, Texts) {
    const std::pair<quint64, const char*> cases[] = {{0, "—"},
                                                     {1, "1 MB"},
                                                     {13 << 20, "13 MB"},
                                                     {109051904, "0.1 GB"},
                                                     {10200547328, "9.5 GB"},
                                                     {10737418240, "10 GB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(formatBytes(bytes), text);
}

QVariantMap manySizes() {
    QVariantMap config = riverConfig();
    config["board"] = "AdJd8s";
    config["starting_street"] = "flop";
    config["effective_stack"] = 500;
    for (const char* const seat : {"oop", "ip"}) {
        for (const char* const street : {"flop", "turn", "river"}) {
            const QString prefix = QStringLiteral("%1_%2").arg(seat, street);
            config[prefix + "_bet_sizes"] = "25,50,75,100,150";
            config[prefix + "_raise_sizes"] = "33,66,100";
        }
    }
    return config;
}

TEST(MemoryBudget, TellsWhatIsWrongAndWhatIsTooLarge) {
    QVariantMap broken = riverConfig();
    broken["oop_river_bet_sizes"] = "2x";
    const std::tuple<QVariantMap, QString, QString> cases[] = {
        {riverConfig(), "7 MB", ""},
        {manySizes(), "More than 24 GB", ""},
        {broken, "—", "Relative raise (x) is not allowed in this context"}};
    MemoryBudget budget;
    budget.setSystem(24 * gigabyte, 20 * gigabyte);
    for (const auto& [config, text, error] : cases) {
        budget.requestEstimate(manySizes());  // stopped by the next
        budget.requestEstimate(config);
        EXPECT_TRUE(budget.estimatePending());
        ASSERT_TRUE(waitUntil([&] { return !budget.estimatePending(); }));
        EXPECT_EQ(std::tuple(budget.requiredText(), budget.estimateError()),
                  std::tuple(text, error));
    }
    budget.requestEstimate(riverConfig());
    budget.stopEstimate();
    EXPECT_FALSE(budget.estimatePending());
    QCoreApplication::processEvents();
    EXPECT_EQ(budget.requiredBytes(), 0U);
}

TEST(MemoryBudget, WhatASolveMayTake) {
    MemoryBudget budget;
    const auto fit = [&budget](const QVariantMap& map) {
        std::optional<MemoryBudget::Fit> told;
        budget.checkFit(kestrel_app::config_from_map(configMapOf(map)),
                        [&told](const MemoryBudget::Fit& answer) { told = answer; });
        EXPECT_FALSE(told) << "never before the call has returned";
        EXPECT_TRUE(waitUntil([&] { return told.has_value(); }));
        return *told;
    };
    budget.setSystem(24 * gigabyte, 20 * gigabyte);
    EXPECT_EQ(fit(manySizes()).reason,
              "Not enough RAM to solve: More than 24 GB needed, 20 GB available");
    QVariantMap broken = riverConfig();
    broken["board"] = "AdAd8s4c2h";
    EXPECT_EQ(fit(broken).reason, "Flop cards must be unique");
    // An estimate that is asked for meanwhile takes nothing from a check.
    std::optional<MemoryBudget::Fit> told;
    budget.checkFit(kestrel_app::config_from_map(configMapOf(riverConfig())),
                    [&told](const MemoryBudget::Fit& answer) { told = answer; });
    budget.requestEstimate(broken);
    ASSERT_TRUE(waitUntil([&] { return !budget.estimatePending(); }));
    EXPECT_TRUE(told && told->fits);
    EXPECT_EQ(budget.estimateError(), "Flop cards must be unique");

    EXPECT_TRUE(fit(riverConfig()).fits);
    const quint64 needed = budget.requiredBytes();
    // Available, and whether a solve may begin.
    const std::pair<quint64, bool> cases[] = {
        {needed - 1, false}, {needed, false}, {needed + 1, true}, {0, true}};
    for (const auto& [available, fits] : cases) {
        budget.setSystem(6 * gigabyte, available);
        EXPECT_EQ(fit(riverConfig()).fits, fits) << available;
    }
    budget.beginSolve();
    // The last result counts as available, up to what there is.
    EXPECT_EQ(budget.reclaimableBytes(), 0U);
    budget.keepResult();
    EXPECT_EQ(budget.reclaimableBytes(), needed);
    const std::array<quint64, 3> effective[] = {
        {6 * gigabyte, gigabyte, gigabyte + needed},
        {gigabyte + 1, gigabyte, gigabyte + 1},
        {0, std::numeric_limits<quint64>::max() - 1, std::numeric_limits<quint64>::max()},
        {0, needed, 2 * needed}};
    for (const auto& [total, available, expected] : effective) {
        budget.setSystem(total, available);
        EXPECT_EQ(budget.effectiveAvailableBytes(), expected);
    }
    EXPECT_TRUE(fit(riverConfig()).fits);
    budget.clearResult();
    EXPECT_EQ(budget.reclaimableBytes(), 0U);
}

}  // namespace
}  // namespace tidewell
