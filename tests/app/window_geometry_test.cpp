#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QJSEngine>
#include <QJSValue>
#include <QRect>
#include <QRectF>
#include <QScreen>
#include <QWindow>
#include <tuple>

#include "app/window_screen.h"

namespace tidewell {
namespace {

class WindowGeometry : public testing::Test {
  protected:
    QJSValue call(const char* function, const QRect& area, int recommendedWidth) {
        const QJSValue rectangle = engine_.toScriptValue(area);
        return module_.property(function).call({rectangle, recommendedWidth});
    }

    QJSEngine engine_;
    QJSValue module_ = engine_.importModule(":/Tidewell/logic/window_geometry.mjs");
};

TEST_F(WindowGeometry, FitsTheScreen) {
    // Screen, recommended width, the window and its least size.
    const std::tuple<QRect, int, QRect, QSize> cases[] = {
        {{0, 0, 1366, 768}, 0, {34, 19, 1297, 729}, {900, 650}},
        {{0, 0, 1920, 1080}, 0, {190, 27, 1540, 1026}, {900, 650}},
        {{0, 0, 3840, 2160}, 1700, {1070, 480, 1700, 1200}, {1700, 650}},
        {{0, 0, 1366, 768}, 1700, {34, 19, 1297, 729}, {1297, 650}},
        // A panel at the top of a screen to the right of another.
        {{1920, 40, 1920, 1040}, 1000, {2110, 66, 1540, 988}, {1000, 650}},
        // Too small for the window: it opens at its least size and may shrink.
        {{0, 0, 800, 600}, 0, {-50, -25, 900, 650}, {760, 570}},
    };
    ASSERT_FALSE(module_.isError()) << module_.toString().toStdString();
    for (const auto& [area, width, window, least] : cases) {
        const QJSValue opening = call("openingGeometry", area, width);
        const auto number = [&](const char* name) { return opening.property(name).toNumber(); };
        EXPECT_EQ(QRectF(number("x"), number("y"), number("width"), number("height")),
                  QRectF(window));
        EXPECT_EQ(call("minimumWidth", area, width).toNumber(), least.width());
        EXPECT_EQ(call("minimumHeight", area, 0).toNumber(), least.height());
    }
}

TEST(WindowScreen, KeepsTheWindowTold) {
    QWindow window;
    const auto told = [&] { return window.property("availableGeometry").toRectF(); };
    const QRectF available = QGuiApplication::primaryScreen()->availableGeometry();
    new WindowScreen(&window);
    EXPECT_EQ(told(), available);
    window.setProperty("availableGeometry", QRectF());
    emit QGuiApplication::primaryScreen()->availableGeometryChanged({});
    EXPECT_EQ(told(), available);
    window.setProperty("availableGeometry", QRectF());
    emit window.screenChanged(window.screen());
    EXPECT_EQ(told(), available);
}

}  // namespace
}  // namespace tidewell
