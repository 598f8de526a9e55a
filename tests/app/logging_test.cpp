#include "app/logging.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDebug>
#include <QDir>
#include <QString>
#include <QTemporaryDir>
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

TEST_F(Logging, FilesStandInTheirFolders) {
    const LogPaths paths = logPaths("/program", "/temporary", "/current");
    EXPECT_EQ(paths.appDir, "/program/tidewell.log");
    EXPECT_EQ(paths.temp, "/temporary/tidewell.log");
    EXPECT_EQ(logPaths("/program", "", "/current").temp, "/current/tidewell.log");
}

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

TEST_F(Logging, UsesTheFileThatOpensAndAppends) {
    for (const char* const message : {"first", "second"}) {
        LogFiles files({path("missing/a.log"), path("b.log")});
        ASSERT_TRUE(files.open());
        qWarning("%s", message);
    }
    EXPECT_THAT(linesOf(path("b.log")), ElementsAre("<time> [WARN] first", "<time> [WARN] second"));

    LogFiles none({path("missing/a.log"), path("missing/b.log")});
    EXPECT_FALSE(none.open());
    testing::internal::CaptureStderr();
    qWarning("by default");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("by default"));
}

TEST_F(Logging, ParallelMessagesStayWhole) {
    constexpr int threadCount = 4;
    constexpr int messageCount = 250;
    {
        LogFiles files({path("a.log"), path("b.log")});
        ASSERT_TRUE(files.open());
        std::vector<std::jthread> threads;
        for (int t = 0; t < threadCount; ++t) {
            threads.emplace_back([t] {
                for (int i = 0; i < messageCount; ++i) {
                    qWarning("thread %d message %d", t, i);
                }
            });
        }
    }
    std::vector<std::string> expected;
    for (int t = 0; t < threadCount; ++t) {
        for (int i = 0; i < messageCount; ++i) {
            expected.push_back("<time> [WARN] thread " + std::to_string(t) + " message " +
                               std::to_string(i));
        }
    }
    EXPECT_THAT(linesOf(path("a.log")), testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(linesOf(path("a.log")), linesOf(path("b.log")));
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
