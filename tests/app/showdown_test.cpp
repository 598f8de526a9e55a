#include <gtest/gtest.h>

#include <QString>
#include <QVariantMap>
#include <array>

#include "app/app_controller.h"

namespace {

TEST(Showdown, NamesTheWinner) {
    const std::array<const char*, 4> cases[] = {
        // board, OOP, IP, winner
        {"AhKsQdJc2d", "AsAd", "KcKd", "OOP"},  // three aces, three kings
        {"AhKsQdJc2d", "AsAd", "Tc3c", "IP"},   // a straight
        {"AhKsQdJcTd", "2s2d", "3s3d", "TIE"},
        {" ah ks\tQD Jc\n2d ", "a s A D", "kckd", "OOP"},
        {"AhKsQdJc2d7c7h", "AsAd??", "KcKd", "OOP"},  // what follows the cards is not read
        {"AhKsQdJc2", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAd", "", "UNKNOWN"},
        {"AhKsQdJc1d", "AsAd", "KcKd", "UNKNOWN"},
        {"AhKsQdJc2d", "AsAä", "KcKd", "UNKNOWN"}};
    const AppController controller;
    for (const auto& [board, oopHand, ipHand, expected] : cases) {
        const QVariantMap result = controller.showdownWinner(board, oopHand, ipHand);
        const QString winner = result["winner"].toString();
        const quint32 oop = result["oopStrength"].toUInt();
        const quint32 ip = result["ipStrength"].toUInt();
        EXPECT_EQ(winner, expected) << board << ' ' << oopHand << ' ' << ipHand;
        EXPECT_EQ(winner == "OOP", oop > ip);
        EXPECT_EQ(winner == "IP", oop < ip);
        EXPECT_EQ(winner == "UNKNOWN", oop == 0 && ip == 0);
    }
}

}  // namespace
