#include <gtest/gtest.h>

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QString>
#include <QVariantMap>

#include "app/app_controller.h"

namespace {

TEST(Showdown, NamesTheWinner) {
    struct Case {
        const char* board;
        const char* oop;
        const char* ip;
        const char* winner;
    };
    const Case cases[] = {
        {"AhKsQdJc2d", "AsAd", "KcKd", "OOP"},  // three aces, three kings
        {"AhKsQdJc2d", "KcKd", "AsAd", "IP"},
        {"AhKsQdJc2d", "AsAd", "Tc3c", "IP"},  // a straight
        {"AhKsQdJcTd", "2s2d", "3s3d", "TIE"},
        {" ah ks\tQD Jc\n2d ", "a s A D", "kckd", "OOP"},
        {"AhKsQdJc2d7c7h", "AsAd??", "KcKd", "OOP"},  // what follows the cards is not read
        {"AhKsQdJc", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsA", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAd", "", "UNKNOWN"},
        {"AhKsQdJc1d", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAä", "KcKd", "UNKNOWN"},
    };
    const AppController controller;
    for (const Case& spot : cases) {
        const QVariantMap result = controller.showdownWinner(spot.board, spot.oop, spot.ip);
        const QString winner = result["winner"].toString();
        const quint32 oop = result["oopStrength"].toUInt();
        const quint32 ip = result["ipStrength"].toUInt();
        EXPECT_EQ(winner, spot.winner) << spot.board << ' ' << spot.oop << ' ' << spot.ip;
        EXPECT_EQ(winner == "OOP", oop > ip);
        EXPECT_EQ(winner == "IP", oop < ip);
        EXPECT_EQ(winner == "UNKNOWN", oop == 0 && ip == 0);
    }
}

TEST(Showdown, ReachesQml) {
    AppController controller;
    QQmlEngine engine;
    engine.rootContext()->setContextProperty("appController", &controller);
    QQmlExpression royalFlushBoard(engine.rootContext(), nullptr,
                                   R"(appController.showdownWinner("AhKhQhJhTh", "2c2d", "3c3d"))");
    const QVariantMap result = royalFlushBoard.evaluate().toMap();
    EXPECT_FALSE(royalFlushBoard.hasError());
    EXPECT_EQ(result,
              (QVariantMap{
                  {"winner", "TIE"}, {"oopStrength", 0x22000000U}, {"ipStrength", 0x22000000U}}));
}

}  // namespace
