#include <gtest/gtest.h>

#include <QClipboard>
#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPointF>
#include <QQuickWindow>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <ostream>
#include <tuple>
#include <utility>
#include <vector>

#include "app/matrix/hand_matrix_item.h"
#include "app/matrix/hand_matrix_picture.h"
#include "session/hand_labels.h"

namespace tidewell {

bool operator==(const ColorRect& a, const ColorRect& b) {
    return a.area == b.area && a.color.rgba() == b.color.rgba();
}

void PrintTo(const ColorRect& rect, std::ostream* out) {
    *out << rect.area.x() << ' ' << rect.area.y() << ' ' << rect.area.width() << " x "
         << rect.area.height() << ' ' << rect.color.name(QColor::HexArgb).toStdString();
}

namespace {

const QColor red("#FF0000");
const QColor green("#00FF00");
const QColor blue("#0000FF");

QColor faded(QColor color, float opacity) {
    color.setAlphaF(color.alphaF() * opacity);
    return color;
}

// Cells of 40 pixels, 2 apart.
HandMatrixPicture emptyPicture() {
    HandMatrixPicture picture;
    picture.grid = {.cellSize = 40.0, .spacing = 2.0};
    picture.palette = {.pair = "#101010",
                       .suited = "#202020",
                       .offsuit = "#303030",
                       .border = "#404040",
                       .focus = "#505050",
                       .selection = "#606060",
                       .accent = "#00FF00"};
    return picture;
}

// What lies on a cell at rest between its background and its border, four lines.
std::vector<ColorRect> fills(const HandMatrixPicture& picture, int hand) {
    std::vector<ColorRect> found;
    for (const ColorRect& rect : picture.rects()) {
        if (picture.grid.cell(hand).contains(rect.area)) {
            found.push_back(rect);
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
    for (int cell = 0; cell < handCount; ++cell) {
        EXPECT_EQ(grid.indexAt(grid.cell(cell).center()), cell);
    }
    EXPECT_EQ((HandGrid{.cellSize = 30.0, .spacing = 0.0}.indexAt({30.0, 0.0})), 1);
}

TEST(HandMatrixPicture, NamesHandsAsTheEngineDoes) {
    for (int hand = 0; hand < handCount; ++hand) {
        EXPECT_EQ(handLabel(hand).toStdString(),
                  kestrel_app::hand_label(static_cast<std::size_t>(hand)));
        EXPECT_EQ(handOfLabel(handLabel(hand)), hand);
    }
    for (const char* const other : {"", "A", "KAs", "AAs", "aks", "AKs "}) {
        EXPECT_EQ(handOfLabel(other), -1) << other;
    }
}

// By its weight, and by its actions where it has a strategy.
TEST(HandMatrixPicture, FillsACell) {
    const QColor r = faded(red, 0.85F);
    const QColor g = faded(green, 0.85F);
    const QColor b = faded(blue, 0.85F);
    const double nan = std::nan("");
    using Rects = std::vector<ColorRect>;
    const std::tuple<std::vector<double>, double, QColor, bool, Rects> cases[] = {
        {{}, nan, red, false, {}},
        {{}, 2.0, red, false, {{{0, 0, 40, 40}, red}}},
        {{}, 0.25, red, false, {{{0, 0, 10, 40}, red}}},
        {{}, 0.25, red, true, {{{0, 30, 40, 10}, red}}},
        {{}, 0.5, QColor(), true, {{{0, 20, 40, 20}, faded(green, 0.8F)}}},
        {{0.5, 0.25, 0.25},
         0.5,
         red,
         true,
         {{{0, 20, 20, 20}, r}, {{20, 20, 10, 20}, g}, {{30, 20, 10, 20}, b}}},
        {{0.25, 0.5, 0.25},
         0.5,
         red,
         false,
         {{{0, 0, 5, 40}, r}, {{5, 0, 10, 40}, g}, {{15, 0, 5, 40}, b}}},
        {{0.25, 0.0, 0.5},
         1.0,
         red,
         false,
         {{{0, 0, 10, 40}, r}, {{10, 0, 30, 40}, b}}},  // to the edge
        {{-1.0, nan, 0.5}, 1.0, red, false, {{{0, 0, 40, 40}, b}}},
        {{0.5, 5.0, 0.5}, 1.0, red, false, {{{0, 0, 20, 40}, r}, {{20, 0, 20, 40}, g}}},
        {{0.25, 0.5, 0.25}, 0.0, red, false, {}},
        {{0.5, 0.5}, 1.0, red, false, {{{0, 0, 40, 40}, red}}}};  // no strategy of these actions
    for (const auto& [shares, weight, color, fromBottom, expected] : cases) {
        HandMatrixPicture picture = emptyPicture();
        picture.actionColors = {red, green, blue};
        picture.fillFromBottom = fromBottom;
        picture.cells[0] = {.weight = weight, .color = color, .shares = shares};
        EXPECT_EQ(fills(picture, 0), expected) << weight << testing::PrintToString(shares);
    }
}

TEST(HandMatrixPicture, RaisesAndFramesCells) {
    HandMatrixPicture picture = emptyPicture();
    picture.hovered = 0;
    picture.lift[0] = 1.0;
    picture.lift[1] = 0.25;
    std::vector<ColorRect> rects = picture.rects();
    ASSERT_EQ(rects.size(), handCount * 5U);
    // Behind all others the one on its way down, then the raised one with its thick border.
    EXPECT_EQ(rects[rects.size() - 10], (ColorRect{{41.5, -0.5, 41, 41}, picture.palette.suited}));
    EXPECT_EQ(rects[rects.size() - 5], (ColorRect{{-2, -2, 44, 44}, picture.palette.pair}));
    EXPECT_EQ(rects[rects.size() - 4], (ColorRect{{-2, -2, 44, 2}, picture.palette.focus}));
    EXPECT_EQ(rects[rects.size() - 1], (ColorRect{{40, 0, 2, 40}, picture.palette.focus}));

    picture = emptyPicture();
    picture.selected = 14;
    picture.current = 14;
    rects = picture.rects();
    ASSERT_EQ(rects.size(), handCount * 5U + 8);
    EXPECT_EQ(rects.back(),
              (ColorRect{{82, 42, 2, 40}, picture.palette.focus}));  // around the cell
    EXPECT_EQ(std::ranges::count(rects, picture.palette.selection, &ColorRect::color), 4);
}

TEST(HandMatrixPicture, DimsOrHidesTheLabelsOfEmptyCells) {
    HandMatrixPicture picture = emptyPicture();
    picture.cells[5].weight = 0.01;
    std::vector<LabelPlace> labels = picture.labels();
    for (const LabelPlace& label : labels) {
        EXPECT_EQ(label.dimmed, label.hand != 5);
        EXPECT_EQ(label.cell, picture.grid.cell(label.hand));
    }
    picture.showEmptyLabels = false;
    labels = picture.labels();
    ASSERT_EQ(labels.size(), 1U);
    EXPECT_EQ(labels[0].hand, 5);
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
        const LabelSheet sheet = drawLabels(cellSize, scale, font, red, Qt::transparent);
        ASSERT_EQ(sheet.tile, std::ceil(cellSize * scale));
        for (int hand = 0; hand < handCount; ++hand) {
            const QImage tile = sheet.image.copy(sheet.source(hand));
            int drawn = 0;
            int onEdge = 0;
            for (int y = 0; y < tile.height(); ++y) {
                for (int x = 0; x < tile.width(); ++x) {
                    const QColor pixel = tile.pixelColor(x, y);
                    const bool edge =
                        x == 0 || y == 0 || x == tile.width() - 1 || y == tile.height() - 1;
                    drawn += pixel.alpha() > 127 ? 1 : 0;
                    onEdge += edge && pixel.alpha() > 0 ? 1 : 0;
                    EXPECT_EQ(pixel.green(), 0);
                }
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
