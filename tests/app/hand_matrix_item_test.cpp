#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QVariantMap>
#include <memory>

#include "app/hand_matrix_item.h"

namespace tidewell {
namespace {

TEST(HandMatrixItem, WritesTheGridAsLinesWithTabs) {
    HandMatrixItem item;
    item.setWeights({{"AA", 1.0}, {"AKs", 0.5}, {"22", 0.12345}, {"KK", 0.0}, {"nonsense", 1.0}});
    item.setActionProbs({{"AA", QVariantList{0.25, 0.75}}, {"22", QVariantList{1.0}}});
    item.setActionColors({"red", "green"});
    item.setProperty("actionTypes", QStringList{"bet 33%", "check"});

    const QStringList lines = item.toText().split('\n');
    ASSERT_EQ(lines.size(), 14);
    EXPECT_EQ(lines.back(), "");
    for (int row = 0; row < 13; ++row) {
        EXPECT_EQ(lines[row].count('\t'), 12) << row;
    }
    EXPECT_TRUE(lines[0].startsWith("AA 1 (bet 33%: 0.25, check: 0.75)\tAKs 0.5\tAQs\t"));
    EXPECT_TRUE(lines[1].startsWith("AKo\tKK\tKQs\t"));
    EXPECT_TRUE(lines[12].endsWith("\t32o\t22 0.123"));
    item.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), item.toText());
}

// Maps and lists come as a script's objects or as lists of the controller.
TEST(HandMatrixItem, TakesItsContentFromScripts) {
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(
        import Tidewell
        HandMatrixItem {
            property var probs: ({AA: [0.25, 0.75]})
            weights: ({AA: 0.5, KK: "0.25"})
            colors: ({AA: "red", KK: Qt.rgba(0, 1, 0, 1)})
            actionTypes: ["check", "bet 33%"]
            actionColors: ["#102030", Qt.rgba(0, 0, 1, 1)]
            actionProbs: probs
        }
    )",
                      QUrl("qrc:/Tidewell/test.qml"));
    const std::unique_ptr<QObject> object(component.create());
    auto* const item = qobject_cast<HandMatrixItem*>(object.get());
    ASSERT_NE(item, nullptr) << component.errorString().toStdString();
    EXPECT_TRUE(item->toText().startsWith("AA 0.5 (check: 0.25, bet 33%: 0.75)\t"));
    EXPECT_EQ(item->currentHand(), "AA");
    EXPECT_EQ(item->currentWeight(), 0.5);
    EXPECT_EQ(item->currentShares(), (QVariantList{0.25, 0.75}));

    const QSignalSpy changes(item, &HandMatrixItem::currentChanged);
    item->setActionProbs({{"AA", QVariant::fromValue(QList<double>{0.125, 0.875})}});
    EXPECT_EQ(item->currentShares(), (QVariantList{0.125, 0.875}));
    item->setWeights({});
    EXPECT_EQ(item->currentWeight(), 0.0);
    EXPECT_EQ(item->currentShares(), QVariantList());
    EXPECT_EQ(changes.size(), 2);
}

TEST(HandMatrixItem, RaisesTheCellUnderThePointer) {
    QQuickWindow window;
    window.resize(600, 600);
    window.setColor(Qt::black);
    HandMatrixItem item(window.contentItem());
    item.setSize({544, 544});
    item.setProperty("cellSize", 40.0);
    item.setProperty("focusColor", QColor("#606060"));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const auto beside = [&] { return window.grabWindow().pixelColor(41, 62).name(); };
    QTest::mouseMove(&window, {62, 62});
    EXPECT_TRUE(QTest::qWaitFor([&] { return beside() == "#606060"; }));
    QTest::mouseMove(&window, {599, 599});
    EXPECT_TRUE(QTest::qWaitFor([&] { return beside() == "#000000"; }));
}

}  // namespace
}  // namespace tidewell
