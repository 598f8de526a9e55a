#include "app/results/node_answers.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <fstream>

#include "app/files/project_file.h"
#include "tests/app/files.h"
#include "tests/app/solved_spot.h"

namespace tidewell {
namespace {

/// 0 under the address sanitizer, which keeps what was freed for a while.
double residentMegabytes() {
    double pages = 0;
#ifndef __SANITIZE_ADDRESS__
    malloc_trim(0);
    std::ifstream("/proc/self/statm") >> pages >> pages;
#endif
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

double fileMegabytes(const ProjectData& data) {
    const QTemporaryDir folder;
    EXPECT_EQ(writeProject(folder.filePath("a"), data, nullptr), "");
    return static_cast<double>(readFile(folder.filePath("a")).size()) / 1e6;
}

TEST(NodeAnswers, AWalkOverManyNodesTakesLittle) {
    QVariantMap cfg = riverConfig(1);
    cfg["board"] = "Td9c6h6c";
    cfg["starting_street"] = "turn";
    cfg["oop_range"] = cfg["ip_range"] = "22+,A2s+,K2s+,Q2s+,J2s+,A2o+,K5o+,Q8o+,J8o+";
    SolvedSpot spot(cfg);
    ProjectData data;
    data.hasResults = true;
    data.results.tree = spot.tree();
    QList<int> decisions;
    for (int node = 1; node < data.results.tree.nodeCount() && decisions.size() < 1000; ++node) {
        if (data.results.tree.meta(node)["nodeType"] == "decision") {
            decisions.push_back(node);
        }
    }
    ASSERT_EQ(decisions.size(), 1000);

    NodeAnswers answers(spot.session());
    answers.keep(0);
    data.records = answers.records();
    const double before = residentMegabytes();
    const double fileBefore = fileMegabytes(data);
    for (const int node : decisions) {
        answers.handStrategyReach169(node, "");
        answers.actionStats(node);
    }
    data.records = answers.records();
    const double perNode = (fileMegabytes(data) - fileBefore) / 1000;
    EXPECT_LT(perNode, 0.035);
    EXPECT_LT(static_cast<double>(answers.memoryBytes()) / 1e6, 35);

    // Looked at hand by hand, all lists together would be many times the limit.
    const QVariantList first = answers.handCombos(decisions[0]);
    constexpr int looked = 300;
    for (int i = 0; i < looked; ++i) {
        answers.handCombos(decisions[i]);
        answers.seatHandCombos(decisions[i], "IP");
    }
    constexpr double limit = NodeAnswers::handListBytes / 1e6;
    EXPECT_LT(static_cast<double>(answers.memoryBytes()) / 1e6, 35 + limit);
    EXPECT_LT(residentMegabytes() - before, 150);
    data.records = answers.records();
    EXPECT_LT(fileMegabytes(data), fileBefore + 35 + 2 * limit);
    EXPECT_TRUE(answers.isKept(0));
    EXPECT_FALSE(answers.records().at(decisions[0]).combos) << "the oldest are gone";
    EXPECT_TRUE(answers.records().at(decisions[looked - 1]).combos) << "the last ones are there";
    EXPECT_EQ(answers.handCombos(decisions[0]), first) << "and come again";

    // What a file held stays.
    answers.restore(data.records);
    for (int i = 0; i < looked; ++i) {
        answers.handCombos(decisions[i]);
    }
    EXPECT_TRUE(answers.records().at(decisions[looked - 1]).combos);
}

}  // namespace
}  // namespace tidewell
