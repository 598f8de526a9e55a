#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTest>
#include <string>
#include <vector>

#include "tests/app/installed_program.h"
#include "tests/app/virtual_display.h"

namespace {

void showOn(const VirtualDisplay& display, InstalledProgram& installed) {
    installed.setVariable("DISPLAY", display.name());
    installed.setVariable("QT_QPA_PLATFORM", "xcb");
    installed.setVariable("TIDEWELL_ENABLE_LOGS", "1");
}

TEST(Program, OpensPaintsAndClosesOnADisplay) {
    const VirtualDisplay display;
    InstalledProgram installed(TIDEWELL_PATH);
    showOn(display, installed);
    QProcess program;
    installed.start(program);

    xcb_window_t window = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (window = display.find("Tidewell")) != 0; }, deadline))
        << program.readAllStandardError().toStdString();
    EXPECT_EQ(display.geometry(window), QRect(34, 19, 1297, 729));
    // As wide as the Project page would like to be, but for the edges of the screen.
    EXPECT_EQ(display.minimumSize(window), QSize(1297, 650));
    EXPECT_TRUE(QTest::qWaitFor([&] { return display.pixel(window, 0, 0) == 0x080B12; }, deadline));

    display.setWorkArea({0, 0, 800, 768});
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return display.minimumSize(window) == QSize(760, 650); }, deadline));

    display.close(window);
    ASSERT_TRUE(program.waitForFinished(deadline));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    const std::vector<std::string> log = linesOf(installed.appLogPath());
    EXPECT_THAT(log, testing::Contains("<time> [INFO] QML loaded. rootObjects=1"));
    EXPECT_THAT(log, testing::Each(testing::Not(testing::ContainsRegex("WARN|ERROR|FATAL"))));
    EXPECT_EQ(linesOf(installed.tempLogPath()), log);
}

TEST(Program, IsAtHomeInTheHandsOfAPerson) {
    const VirtualDisplay display;
    InstalledProgram installed(WALKTHROUGH_PATH);
    showOn(display, installed);
    QProcess program;
    installed.start(program, {"walk.tidewellproj"});

    ASSERT_TRUE(program.waitForFinished(3 * deadline));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_GT(QFileInfo(installed.path("home/walk.tidewellproj")).size(), 1000);
    EXPECT_THAT(linesOf(installed.appLogPath()),
                testing::Each(testing::Not(testing::ContainsRegex("WARN|ERROR|FATAL"))));
}

}  // namespace
