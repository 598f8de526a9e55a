#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QTest>
#include <string>

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
