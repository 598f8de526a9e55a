#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTest>
#include <string>
#include <utility>

#include "tests/app/installed_program.h"

namespace {

constexpr int deadline = 60000;  // milliseconds; only a fault gets there

/// A display of its own without a screen to look at and without a window manager.
class VirtualDisplay {
  public:
    VirtualDisplay() {
        // It chooses a number that is free and tells it when it is ready.
        server_.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1366x768x24", "-nolisten", "tcp",
                               "-noreset"});
        while (!server_.canReadLine() && server_.waitForReadyRead(deadline)) {
        }
        name_ = ":" + server_.readLine().trimmed();
    }
    ~VirtualDisplay() {
        server_.terminate();
        server_.waitForFinished(deadline);
    }

    QString name() const { return name_; }

  private:
    QProcess server_;
    QString name_;
};

/// What it has logged as less than well.
std::string complaints(const InstalledProgram& installed) {
    std::string found;
    for (const std::string& line : linesOf(installed.appLogPath())) {
        const bool well = line.find("[INFO]") != std::string::npos;
        found += well ? std::string() : line + '\n';
    }
    return found;
}

TEST(Program, StartsWithoutAWarning) {
    InstalledProgram installed(TIDEWELL_PATH);
    installed.setVariable("TIDEWELL_ENABLE_LOGS", "1");
    QProcess program;
    installed.start(program);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return readFile(installed.appLogPath()).contains("QML loaded. rootObjects=1"); },
        deadline));
    program.kill();
    EXPECT_TRUE(program.waitForFinished(deadline));
    EXPECT_EQ(complaints(installed), "");
}

TEST(Program, AnswersItsCommandLine) {
    InstalledProgram installed(TIDEWELL_PATH);
    installed.setVariable("QT_QPA_PLATFORM", "no such display");
    for (const auto& [argument, answer] :
         {std::pair("--version", "tidewell 1."), std::pair("--help", "Usage: tidewell [FILE]")}) {
        QProcess program;
        installed.start(program, {argument});
        EXPECT_TRUE(program.waitForFinished(deadline));
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_TRUE(program.readAllStandardOutput().startsWith(answer)) << argument;
    }
    installed.setVariable("QT_QPA_PLATFORM", "offscreen");
    for (const QStringList& wrong : {QStringList{"--colour", "x"}, QStringList{"a", "b"}}) {
        QProcess program;
        installed.start(program, wrong);
        EXPECT_TRUE(program.waitForFinished(deadline));
        EXPECT_EQ(program.exitCode(), 2);
        EXPECT_TRUE(program.readAllStandardError().startsWith("tidewell: "));
    }
}

TEST(Program, OpensTheFileItIsStartedWith) {
    InstalledProgram installed(TIDEWELL_PATH);
    installed.setVariable("TIDEWELL_ENABLE_LOGS", "1");
    // Nothing that could be waited for is read.
    const QString pipe = installed.path("home/a pipe");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const char* const file : {"a pipe", "--", "missing"}) {
        QProcess program;
        installed.start(program,
                        file == QString("--") ? QStringList{"--", "-x"} : QStringList{file});
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return readFile(installed.appLogPath()).contains("Load failed: "); }, deadline))
            << file;
        program.kill();
        EXPECT_TRUE(program.waitForFinished(deadline));
        QFile::remove(installed.appLogPath());
    }
}

TEST(Program, IsAtHomeInTheHandsOfAPerson) {
    const VirtualDisplay display;
    InstalledProgram installed(WALKTHROUGH_PATH);
    installed.setVariable("DISPLAY", display.name());
    installed.setVariable("QT_QPA_PLATFORM", "xcb");
    installed.setVariable("TIDEWELL_ENABLE_LOGS", "1");
    QProcess program;
    installed.start(program, {"walk.tidewellproj"});

    ASSERT_TRUE(program.waitForFinished(3 * deadline));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_GT(QFileInfo(installed.path("home/walk.tidewellproj")).size(), 1000);
    EXPECT_EQ(complaints(installed), "");
}

}  // namespace
