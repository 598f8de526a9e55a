#include "app/logging.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDebug>
#include <QDir>
#include <QString>
#include <QTemporaryDir>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "app/platform/crash_handlers.h"
#include "tests/app/installed_program.h"

namespace tidewell {
namespace {

using testing::ElementsAre;

class Logging : public testing::Test {
  protected:
    QString path(const QString& name) const { return folder_.filePath(name); }

    QTemporaryDir folder_;
};

TEST_F(Logging, WritesTimeLevelAndMessageToEachFile) {
    {
        LogFiles files({path("a.log"), path("b.log")});
        ASSERT_TRUE(files.open());
        qDebug() << "one" << 1;
        qInfo("zwei: %s", "äöü");
        qWarning().noquote() << "three\nlines" << path("");
        qCritical("%s", "");
    }
    qWarning("(expected here) not in a file that was left");
    EXPECT_THAT(
        linesOf(path("a.log")),
        ElementsAre("<time> [DEBUG] one 1", "<time> [INFO] zwei: äöü", "<time> [WARN] three",
                    "lines " + path("").toStdString(), "<time> [ERROR] "));
    EXPECT_EQ(linesOf(path("b.log")), linesOf(path("a.log")));
}

TEST_F(Logging, ParallelMessagesStayWhole) {
    constexpr std::size_t threadCount = 4;
    constexpr std::size_t messageCount = 250;
    {
        LogFiles files({path("a.log"), path("b.log")});
        ASSERT_TRUE(files.open());
        std::vector<std::jthread> threads;
        for (std::size_t t = 0; t < threadCount; ++t) {
            threads.emplace_back([t] {
                for (std::size_t i = 0; i < messageCount; ++i) {
                    qWarning("thread %zu message %zu", t, i);
                }
            });
        }
    }
    const std::vector<std::string> lines = linesOf(path("a.log"));
    EXPECT_EQ(std::set(lines.begin(), lines.end()).size(), threadCount * messageCount);
    EXPECT_THAT(
        lines,
        testing::Each(testing::MatchesRegex("<time> \\[WARN\\] thread [0-3] message [0-9]{1,3}")));
    EXPECT_EQ(linesOf(path("b.log")), lines);
}

TEST_F(Logging, LastWordsAreAppendedWithoutAWord) {
    const std::string file = path("last.log").toStdString();
    appendLineToFile("one", file.c_str());
    appendLineToFile("", file.c_str());
    appendLineToFile(std::string(600, 'x'), file.c_str());
    EXPECT_THAT(linesOf(path("last.log")),
                ElementsAre("one\r", "\r", std::string(510, 'x') + "\r"));

    appendLineToFile("no file", "");
    appendLineToFile("no folder", path("missing/last.log").toStdString().c_str());
    appendLineToFile("a folder", folder_.path().toStdString().c_str());
    EXPECT_THAT(QDir(folder_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                ElementsAre("last.log"));
}

}  // namespace
}  // namespace tidewell
