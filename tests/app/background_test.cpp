#include "app/background.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QTimer>
#include <QWindow>
#include <stdexcept>
#include <thread>

#include "tests/app/controller_support.h"

namespace tidewell {
namespace {

/// Sees the mouse move over it.
class MouseWindow : public QWindow {
  public:
    int moves = 0;

  protected:
    void mouseMoveEvent(QMouseEvent*) override { ++moves; }
};

TEST(Background, EventsAreHandledMeanwhileButForTheUsers) {
    MouseWindow window;
    window.setGeometry(0, 0, 100, 100);
    window.show();
    ASSERT_TRUE(waitUntil([&] { return window.isExposed(); }));
    QCursor::setPos(50, 50);
    ASSERT_TRUE(waitUntil([&] { return window.moves > 0; })) << "the mouse can be seen at all";
    window.moves = 0;

    std::atomic<int> turns = 0;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, &turning, [&] {
        QCursor::setPos(60 + turns % 2, 60);
        ++turns;
    });
    turning.start(0);
    std::atomic<bool> told = false;
    const auto here = std::this_thread::get_id();
    runBeside(
        [&](std::atomic<double>& progress) {
            EXPECT_NE(std::this_thread::get_id(), here);
            progress = 0.5;
            while (turns < 100 || !told) {
                std::this_thread::yield();
            }
        },
        [&](double progress) { told = told || progress == 0.5; });
    turning.stop();
    EXPECT_EQ(window.moves, 0);
    EXPECT_TRUE(waitUntil([&] { return window.moves > 0; })) << "put off, not lost";
}

TEST(Background, EndsWithItsWorkThoughTheLoopIsToldToEndMeanwhile) {
    std::atomic<bool> left = false;
    bool done = false;
    QTimer::singleShot(0, [&] {
        QCoreApplication::exit();
        left = true;
        left.notify_all();
    });
    runBeside(
        [&](std::atomic<double>&) {
            left.wait(false);
            done = true;
        },
        nullptr);
    EXPECT_TRUE(done);
    for (int round = 0; round < 200; ++round) {  // which a short one may end before it is awaited
        done = false;
        runBeside([&](std::atomic<double>&) { done = true; }, nullptr);
        ASSERT_TRUE(done);
    }
}

TEST(Background, WhatIsThrownCrossesOver) {
    const auto fail = [](std::atomic<double>&) { throw std::runtime_error("lost"); };
    EXPECT_THROW(runBeside(fail, [](double) {}), std::runtime_error);
}

}  // namespace
}  // namespace tidewell
