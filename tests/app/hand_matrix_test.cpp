#include <gtest/gtest.h>

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "app/matrix/hand_matrix_item.h"
#include "app/matrix/hand_matrix_picture.h"
#include "session/hand_labels.h"

namespace tidewell {
namespace {

// "0 20 40 20 #ffff0000": place, size and colour.
std::string told(const ColorRect& rect) {
    std::ostringstream text;
    text << rect.area.x() << ' ' << rect.area.y() << ' ' << rect.area.width() << ' '
         << rect.area.height() << ' ' << rect.color.name(QColor::HexArgb).toStdString();
    return text.str();
}

// Cells of 40 pixels, 2 apart.
HandMatrixPicture emptyPicture() {
    HandMatrixPicture picture;
    picture.grid = {.cellSize = 40.0, .spacing = 2.0};
    // Of pairs, suited and offsuit hands, borders, focus, selection and accent.
    picture.palette = {"#101010", "#202020", "#303030", "#404040", "#505050", "#606060", "lime"};
    return picture;
}

// What lies on a cell at rest between its background and its border, four lines.
std::vector<std::string> fills(const HandMatrixPicture& picture, int hand) {
    std::vector<std::string> found;
    for (const ColorRect& rect : picture.rects()) {
        if (picture.grid.cell(hand).contains(rect.area)) {
            found.push_back(told(rect));
        }
    }
    EXPECT_GE(found.size(), 5U);
    return {found.begin() + 1, found.end() - 4};
}

TEST(HandGrid, FindsTheCellUnderAPoint) {
    const HandGrid grid = {.cellSize = 30.0, .spacing = 2.0};
    const std::pair<QPointF, int> cases[] = {
        {{29.9, 29.9}, 0}, {{30.0, 5.0}, -1},  {{5.0, 31.0}, -1},  {{32.0, 5.0}, 1},
        {{5.0, 32.0}, 13}, {{414.0, 5.0}, -1}, {{416.0, 5.0}, -1}, {{413.9, 413.9}, 168},
        {{-0.1, 5.0}, -1}, {{5.0, 1e300}, -1}, {{NAN, 5.0}, -1}};
    for (const auto& [point, cell] : cases) {
        EXPECT_EQ(grid.indexAt(point), cell) << point.x() << ' ' << point.y();
    }
    EXPECT_EQ((HandGrid{.cellSize = 30.0, .spacing = 0.0}.indexAt({30.0, 0.0})), 1);

    const std::tuple<QPointF, QPointF, std::vector<int>> ways[] = {
        {{5, 5}, {5, 5}, {0}},
        {{70, 5}, {5, 5}, {2, 1, 0}},
        {{5, 5}, {69, 69}, {0, 14, 28}},           // through the corners
        {{5, 20}, {69, 84}, {0, 13, 14, 27, 28}},  // beside them
        {{385, 415}, {1e9, 415}, {}},              // below the grid
        {{385, 400}, {1e9, 400}, {168}},           // and out of it
        {{31, -9}, {31, 900}, {}}};                // along a gap
    for (const auto& [from, to, cells] : ways) {
        EXPECT_EQ(grid.cellsBetween(from, to), cells) << from.x() << ' ' << from.y();
    }
}

TEST(HandMatrixPicture, NamesHandsAsTheEngineDoes) {
    for (int hand = 0; hand < handCount; ++hand) {
        const QString& label = handLabel(hand);
        EXPECT_EQ(label.toStdString(), kestrel_app::hand_label(static_cast<std::size_t>(hand)));
        EXPECT_EQ(handOfLabel(label), hand);
    }
    EXPECT_EQ(handOfLabel("KAs"), -1);
}

// By its weight, and by its actions where it has a strategy.
TEST(HandMatrixPicture, FillsACell) {
    const QColor red("red");
    const double nan = std::nan("");
    using Rects = std::vector<std::string>;
    const std::tuple<std::vector<double>, double, QColor, bool, Rects> cases[] = {
        {{}, nan, red, false, {}},
        {{}, 0.25, red, false, {"0 0 10 40 #ffff0000"}},
        {{}, 0.5, {}, true, {"0 20 40 20 #cc00ff00"}},
        {{0.5, 0.5}, 0.5, red, true, {"0 20 20 20 #d9ff0000", "20 20 20 20 #d900ff00"}},
        {{0.25, 0.0}, 1.0, red, false, {"0 0 10 40 #d9ff0000", "10 0 30 40 #d900ff00"}},
        {{-1.0, nan}, 1.0, red, false, {"0 0 40 40 #d900ff00"}},
        {{5.0, 0.5}, 1.0, red, false, {"0 0 40 40 #d9ff0000"}},
        // No strategy of these actions.
        {{0.25, 0.25, 0.5}, 1.0, red, false, {"0 0 40 40 #ffff0000"}}};
    for (const auto& [shares, weight, color, fromBottom, expected] : cases) {
        HandMatrixPicture picture = emptyPicture();
        picture.actionColors = {"red", "lime"};
        picture.fillFromBottom = fromBottom;
        picture.cells[0] = {.weight = weight, .color = color, .shares = shares};
        EXPECT_EQ(fills(picture, 0), expected) << weight << testing::PrintToString(shares);
    }
}

// A line parts two sizes, and nothing else; an all-in is hatched.
TEST(HandMatrixPicture, MarksActions) {
    HandMatrixPicture picture = emptyPicture();
    for (const char* type : {"check", "bet 33%", "bet 75%", "allin"}) {
        picture.actionColors.emplace_back("red");
        picture.actionMarks.push_back(actionMark(type));
    }
    picture.cells[0] = {.weight = 1.0, .color = {}, .shares = {0.25, 0.25, 0.25, 0.25}};
    const std::vector<std::string> expected = {"0 0 10 40 #d9ff0000",  "10 0 10 40 #d9ff0000",
                                               "20 0 10 40 #d9ff0000", "20 0 1 40 #ff101010",
                                               "30 0 10 40 #d9ff0000", "30 0 10 40 #66ffffff"};
    EXPECT_EQ(fills(picture, 0), expected);
    const auto rects = picture.rects();
    EXPECT_EQ(std::ranges::count(rects, true, &ColorRect::hatched), 1);
}

// Stripes keep to their area, cover the same part of it wherever it lies, and do not overlap.
TEST(HandMatrixPicture, HatchesWithinAnArea) {
    for (const QRectF area :
         {QRectF(0, 0, 700, 700), QRectF(3, -5, 1400, 7), QRectF(9, 9, 1, 700)}) {
        std::vector<Quad> stripes;
        addHatch(stripes, area);
        double covered = 0.0;
        for (const Quad& stripe : stripes) {
            for (std::size_t i = 0; i < stripe.size(); ++i) {
                const QPointF next = stripe[(i + 1) % stripe.size()];
                covered += (stripe[i].y() * next.x() - stripe[i].x() * next.y()) / 2.0;
                EXPECT_TRUE(area.adjusted(-1e-9, -1e-9, 1e-9, 1e-9).contains(next));
            }
        }
        EXPECT_NEAR(covered / (area.width() * area.height()), 2.5 / 7.0, 0.005);
    }
}

TEST(HandMatrixPicture, RaisesAndFramesCells) {
    HandMatrixPicture picture = emptyPicture();
    picture.hovered = 0;
    picture.lift[0] = 1.0;
    picture.lift[1] = 0.25;
    std::vector<ColorRect> rects = picture.rects();
    // Behind all others the one on its way down, then the raised one with its thick border.
    const auto fromTheEnd = [&](std::size_t back) { return told(rects[rects.size() - back]); };
    EXPECT_EQ(fromTheEnd(10), "41.5 -0.5 41 41 #ff202020");
    EXPECT_EQ(fromTheEnd(5), "-2 -2 44 44 #ff101010");
    EXPECT_EQ(fromTheEnd(4), "-2 -2 44 2 #ff505050");

    picture = emptyPicture();
    picture.cells[5].weight = 0.01;
    picture.showEmptyLabels = false;
    EXPECT_EQ(picture.labels().size(), 1U);
    picture.selected = 14;
    picture.current = 14;
    rects = picture.rects();
    EXPECT_EQ(fromTheEnd(1), "82 42 2 40 #ff505050");  // around the cell
    EXPECT_EQ(std::ranges::count(rects, picture.palette.selection, &ColorRect::color), 4);
}

// Every label is there, in its own colour, and none touches the edge of its cell, whatever the
// font.
TEST(LabelSheet, FitsEveryLabelIntoItsCell) {
    // Size of a cell, scale, points.
    const std::tuple<double, double, double> cases[] = {
        {28.0, 1.0, 10.0}, {30.0, 2.0, 11.25}, {33.5, 1.5, 11.25}, {28.0, 1.0, 40.0}};
    for (const auto& [cellSize, scale, pointSize] : cases) {
        QFont font("monospace");
        font.setPointSizeF(pointSize);
        const LabelSheet sheet = drawLabels(cellSize, scale, font, "red", Qt::transparent);
        ASSERT_EQ(sheet.tile, std::ceil(cellSize * scale));
        for (int hand = 0; hand < handCount; ++hand) {
            const QRect tile = sheet.source(hand);
            const QRect inside = tile.adjusted(1, 1, -1, -1);
            int drawn = 0;
            int onEdge = 0;
            for (int place = 0; place < tile.width() * tile.height(); ++place) {
                const QPoint at =
                    tile.topLeft() + QPoint(place % tile.width(), place / tile.width());
                const QColor pixel = sheet.image.pixelColor(at);
                drawn += pixel.alpha() > 127 && pixel.green() == 0 ? 1 : 0;
                onEdge += pixel.alpha() > 0 && !inside.contains(at) ? 1 : 0;
            }
            EXPECT_GT(drawn, 20) << handLabel(hand).toStdString() << ' ' << cellSize;
            EXPECT_EQ(onEdge, 0) << handLabel(hand).toStdString() << ' ' << cellSize;
        }
    }
}

TEST(LabelSheet, KeepsThePixelsOfALabelAtRest) {
    LabelSheet sheet;
    sheet.tile = 51;  // for cells of 33.5 at 1.5
    sheet.scale = 1.5;
    const QRectF atRest = sheet.target({35.5, 0.0, 33.5, 33.5}, 33.5);
    EXPECT_EQ(atRest.width(), 34.0);
    EXPECT_EQ(atRest.x() * 1.5, std::round(atRest.x() * 1.5));
    EXPECT_LT(std::abs(atRest.center().x() - (35.5 + 33.5 / 2)), 0.5);
    const QRectF raised = sheet.target({100.0, 100.0, 67.0, 67.0}, 33.5);
    EXPECT_EQ(raised.width(), 68.0);
    EXPECT_EQ(raised.center(), QPointF(133.5, 133.5));
}

TEST(HandMatrixItem, WritesTheGridAsLinesWithTabs) {
    HandMatrixItem item;
    item.setWeights({{"AA", 1.0}, {"AKs", 0.5}, {"22", 0.12345}, {"KK", 0.0}, {"nonsense", 1.0}});
    item.setActionProbs({{"AA", QVariantList{0.25, 0.75}}, {"22", QVariantList{1.0}}});
    item.setActionColors({"red", "green"});
    item.setProperty("actionTypes", QStringList{"bet 33%", "check"});

    const QStringList lines = item.toText().split('\n');
    ASSERT_EQ(lines.size(), 14);
    EXPECT_EQ(item.toText().count('\t'), 13 * 12);
    EXPECT_TRUE(lines[0].startsWith("AA 1 (bet 33%: 0.25, check: 0.75)\tAKs 0.5\tAQs\t"));
    EXPECT_TRUE(lines[12].endsWith("\t32o\t22 0.123"));
}

}  // namespace
}  // namespace tidewell
