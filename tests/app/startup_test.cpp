#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/logging.h"
#include "platform/crash_handlers.h"
#include "platform/log_file.h"
#include "tests/app/files.h"
#include "tests/app/installed_program.h"

namespace tidewell {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::MatchesRegex;
using testing::Not;

const std::string installedLine = "<time> [INFO] Crash handlers installed (v2)\r";
const std::string startingLine = "<time> [INFO] --- Tidewell starting (pre-QFile) ---\r";

/// The start-up with a document of the test's.
class Startup : public testing::Test {
  protected:
    Startup() : child_(STARTUP_CHILD_PATH) { setDocument("Component.onCompleted: Qt.quit()"); }

    void setDocument(const QByteArray& body) const {
        writeFile(child_.path("document.qml"),
                  "import QtQml\nQtObject {\n property rect availableGeometry\n" + body + "\n}\n");
    }

    void run(const QString& death = {}) {
        QProcess process;
        QStringList arguments = {child_.path("document.qml")};
        if (!death.isEmpty()) {
            arguments.append(death);
        }
        child_.start(process, arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        crashed_ = process.exitStatus() == QProcess::CrashExit;
        code_ = process.exitCode();  // the signal, when one ended it
        errorOutput_ = process.readAllStandardError().toStdString();
        appLog_ = linesOf(child_.appLogPath());
        tempLog_ = linesOf(child_.tempLogPath());
    }

    InstalledProgram child_;
    bool crashed_ = false;
    int code_ = 0;
    std::string errorOutput_;
    std::vector<std::string> appLog_;
    std::vector<std::string> tempLog_;
};

TEST_F(Startup, LeavesTwoLinesWithoutLogging) {
    child_.setVariable("KESTREL_ENABLE_LOGS", "2");
    child_.setVariable("TIDEWELL_ENABLE_LOGS", "enabled");
    setDocument(R"(Component.onCompleted: {
        console.info("to be dropped");
        console.warn("to be seen");
        Qt.exit(7);
    })");
    run();
    EXPECT_FALSE(crashed_);
    EXPECT_EQ(code_, 7);
    EXPECT_THAT(errorOutput_, AllOf(HasSubstr("to be seen"), Not(HasSubstr("to be dropped"))));
    run();
    EXPECT_THAT(appLog_, ElementsAre(installedLine, startingLine, installedLine, startingLine));
    EXPECT_EQ(tempLog_, appLog_);
}

TEST_F(Startup, LogsToBothFilesWhenAsked) {
    child_.setVariable("KESTREL_ENABLE_LOGS", "0");
    child_.setVariable("TIDEWELL_ENABLE_LOGS", " TRUE ");
    setDocument(R"(Component.onCompleted: {
        const application = Qt.application;
        console.debug(application.organization, application.displayName, application.version);
        console.warn("♠\nä", appController.showdownWinner("AhKsQdJc2d", "AsAd", "KcKd").winner);
        console.error(typeof languageManager.setLanguage, typeof updates.checkNow);
        undefinedFunction();
    }
    Component.onDestruction: console.warn(appController.showdownWinner("", "", "").winner)
    property var timer: Timer { running: true; interval: 0; onTriggered: Qt.quit() })");
    run();
    EXPECT_FALSE(crashed_);
    EXPECT_EQ(code_, 0);

    const auto path = [this](const QString& name) { return child_.path(name).toStdString(); };
    ASSERT_GT(appLog_.size(), 8U);
    EXPECT_THAT(
        std::vector(appLog_.begin(), appLog_.begin() + 8),
        ElementsAre(installedLine, startingLine, "<time> [INFO] Starting Tidewell",
                    "<time> [INFO] appDir=" + path("app"), "<time> [INFO] cwd=" + path("home"),
                    "<time> [INFO] log_appDir=" + path("app/tidewell.log"),
                    "<time> [INFO] log_temp=" + path("tmp/tidewell.log"),
                    "<time> [INFO] QuickControlsStyle=Basic"));
    EXPECT_THAT(appLog_, IsSupersetOf({"<time> [DEBUG] Tidewell Tidewell 1.0.4", "<time> [WARN] ♠",
                                       "ä OOP", "<time> [ERROR] function function",
                                       "<time> [INFO] QML loaded. rootObjects=1"}));
    EXPECT_THAT(appLog_, Contains(MatchesRegex(".*WARN. file:.*undefinedFunction.*")));
    EXPECT_EQ(appLog_.back(), "<time> [WARN] UNKNOWN");  // the document goes before the objects
    EXPECT_EQ(tempLog_, appLog_);
}

// Others can put things into a temporary folder.
TEST_F(Startup, MakesDoWithTheFilesThatAreItsOwn) {
    const QByteArray kept = "kept\n";
    const QString victim = child_.path("victim");
    const QString log = child_.tempLogPath();
    const std::pair<const char*, std::function<bool()>> traps[] = {
        {"folder", [&] { return QDir().mkdir(log); }},
        {"pipe", [&] { return mkfifo(log.toUtf8(), 0666) == 0; }},
        {"link", [&] { return QFile::link(victim, log); }},
        {"link to nothing", [&] { return QFile::link(child_.path("home/new"), log); }},
        {"hard link", [&] { return link(victim.toUtf8(), log.toUtf8()) == 0; }}};
    writeFile(victim, kept);
    child_.setVariable("KESTREL_ENABLE_LOGS", "1");
    for (const auto& [name, set] : traps) {
        SCOPED_TRACE(name);
        QFile::remove(child_.appLogPath());
        ASSERT_TRUE(set());
        run();
        EXPECT_EQ(code_, 0);
        EXPECT_THAT(appLog_, Contains("<time> [INFO] QML loaded. rootObjects=1"));
        EXPECT_THAT(errorOutput_, Not(HasSubstr("QML loaded")));
        EXPECT_EQ(readFile(victim), kept);
        EXPECT_FALSE(QFile::exists(child_.path("home/new")));
        EXPECT_TRUE(QFile::remove(log) || QDir().rmdir(log));
    }
    QFile::remove(child_.appLogPath());
    QDir().mkdir(child_.appLogPath());
    QDir().mkdir(log);
    run();
    EXPECT_EQ(code_, 0);
    EXPECT_THAT(errorOutput_,
                AllOf(HasSubstr("QML loaded. rootObjects=1"), Not(HasSubstr("Starting"))));
}

TEST_F(Startup, PutsAFullLogAside) {
    const QByteArray full(tidewell_platform::full_log, 'x');
    writeFile(child_.appLogPath(), full);
    writeFile(child_.tempLogPath(), full);
    QDir().mkdir(child_.tempLogPath() + ".old");  // nowhere to go
    run();
    EXPECT_THAT(appLog_, ElementsAre(installedLine, startingLine));
    EXPECT_EQ(tempLog_, appLog_);
    EXPECT_EQ(readFile(child_.appLogPath() + ".old"), full);
    EXPECT_EQ(QFile::permissions(child_.tempLogPath()) & (QFile::ReadGroup | QFile::ReadOther), 0);
}

TEST_F(Startup, EndsWithoutARootObject) {
    child_.setVariable("TIDEWELL_ENABLE_LOGS", "on");
    setDocument("no property: 1");
    run();
    EXPECT_EQ(code_, 255);
    const std::string document = "file://" + child_.path("document.qml").toStdString();
    EXPECT_THAT(appLog_, Contains(MatchesRegex(".*WARN. " + document + ":4:.*")));
    EXPECT_THAT(appLog_, Contains("<time> [ERROR] Failed to load QML: " + document));
}

TEST(ReportFailures, EndsTheEventLoopWhenALaterDocumentFails) {
    QQmlApplicationEngine engine;
    reportFailures(engine);
    testing::internal::CaptureStderr();
    engine.loadData("import QtQml\nQtObject { missing: 1 }");
    EXPECT_EQ(QGuiApplication::exec(), -1);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("QML object creation failed"));
}

TEST_F(Startup, LastWordsReachBothFiles) {
    const auto fault = [](const std::string& code, const std::string& address) {
        const std::string rest = " exception code=0x" + code + " addr=" + address + "\r";
        return std::vector{"FATAL: Vectored" + rest, "FATAL: Unhandled SEH" + rest};
    };
    const std::string terminateLine = "FATAL: std::terminate\\(\\) called\r";
    const std::string allocationLine = "FATAL: std::new_handler invoked \\(out of memory\\)\r";
    const std::string anywhere = "[1-9a-f][0-9a-f]+";
    // The death, its signal, and the lines before that of the signal.
    const std::tuple<const char*, int, std::vector<std::string>> cases[] = {
        {"abort", SIGABRT, {}},
        {"bad address", SIGSEGV, fault("b", "10")},
        {"bad address in a thread", SIGSEGV, fault("b", "10")},
        {"stack overflow", SIGSEGV, fault("b", anywhere)},
        {"beyond a file", SIGBUS, fault("7", anywhere)},
        {"terminate", SIGABRT, {terminateLine}},
        {"uncaught exception", SIGABRT, {terminateLine}},
        {"failed allocation", SIGABRT, {allocationLine}},
        {"fatal message", SIGABRT, {}},
        {"graphics driver", SIGSEGV, fault("b", "10")}};
    child_.setVariable("QT_QPA_PLATFORM", "minimal");  // offscreen asks for no driver
    setDocument("");
    for (const auto& [death, signal, patterns] : cases) {
        QFile::remove(child_.appLogPath());
        QFile::remove(child_.tempLogPath());
        run(death);
        EXPECT_TRUE(crashed_) << death;
        EXPECT_EQ(code_, signal) << death;
        std::vector<testing::Matcher<std::string>> lines = {installedLine, startingLine};
        for (const std::string& pattern : patterns) {
            lines.push_back(MatchesRegex(pattern));
        }
        lines.push_back("FATAL: C signal received sig=" + std::to_string(signal) + "\r");
        EXPECT_THAT(appLog_, testing::ElementsAreArray(lines)) << death;
        EXPECT_EQ(tempLog_, appLog_) << death;
    }
    child_.setVariable("TIDEWELL_ENABLE_LOGS", "1");
    run("fatal message");
    EXPECT_THAT(appLog_, Contains("<time> [FATAL] the last message"));
}

class Logging : public testing::Test {
  protected:
    QString path(const QString& name) const { return folder_.filePath(name); }

    QTemporaryDir folder_;
};

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
    EXPECT_THAT(lines, testing::Each(MatchesRegex("<time> .WARN. thread . message [0-9]{1,3}")));
    EXPECT_EQ(linesOf(path("b.log")), lines);
}

TEST_F(Logging, FilesStayBounded) {
    constexpr qint64 length = 100'000;
    {
        LogFiles files({path("a.log"), path("none/b.log")});
        ASSERT_TRUE(files.open());
        for (int i = 0; i < 30; ++i) {
            qWarning().noquote() << QString(length, QChar('a' + i));
        }
    }
    for (const char* const name : {"a.log", "a.log.old"}) {
        const QByteArray bytes = readFile(path(name));
        EXPECT_GT(bytes.size(), 2 * length);
        EXPECT_LT(bytes.size(), tidewell_platform::full_log + length + 100);
        EXPECT_EQ(bytes.contains(char('a' + 29)), name == std::string("a.log"));
    }
}

TEST_F(Logging, LastWordsAreAppendedWithoutAWord) {
    const std::string file = path("last.log").toStdString();
    for (const std::string& line : {std::string("one"), std::string(), std::string(600, 'x')}) {
        tidewell_platform::appendLineToFile(line, file.c_str());
    }
    EXPECT_THAT(linesOf(path("last.log")),
                ElementsAre("one\r", "\r", std::string(510, 'x') + "\r"));
    for (const QString& nothing : {QString(), path("missing/last.log"), folder_.path()}) {
        tidewell_platform::appendLineToFile("nowhere", nothing.toUtf8());
    }
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), QStringList("last.log"));
}

}  // namespace
}  // namespace tidewell
