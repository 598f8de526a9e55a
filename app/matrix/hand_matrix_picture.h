#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <array>
#include <bitset>
#include <vector>

namespace tidewell {

/// The 169 starting hands as a grid over the ranks from the ace down, numbered row * 13 + column:
/// pairs on the diagonal, suited hands above it, offsuit hands below.
inline constexpr int handGridSide = 13;
inline constexpr int handCount = handGridSide * handGridSide;

/// Label of a hand, the higher rank first: "AA" for 0, "AKs" for 1, "AKo" for 13, "22" for 168.
const QString& handLabel(int hand);

/// The hand of a label; -1 for a text that is none.
int handOfLabel(const QString& label);

/// Where the cells lie, in pixels from the top left corner of the grid.
struct HandGrid {
    double cellSize = 32.0;
    double spacing = 2.0;

    QRectF cell(int index) const;

    /// The cell at a point; -1 outside the grid and over the gap between two cells.
    int indexAt(QPointF point) const;

    /// The cells that a straight way leads through, in its order. One that it only touches is none
    /// of them.
    std::vector<int> cellsBetween(QPointF from, QPointF to) const;
};

/// What one cell shows.
struct HandCell {
    double weight = 0.0;         ///< As it was given; drawn within [0, 1], NaN as 0.
    QColor color;                ///< Of the fill without shares; invalid for the palette's accent.
    std::vector<double> shares;  ///< Probability of each action; empty without a strategy.
    bool divided = false;        ///< Its combos differ, so that the weight is their mean.
};

struct HandMatrixPalette {
    QColor pair;
    QColor suited;
    QColor offsuit;
    QColor border;
    QColor focus;      ///< Around the hovered and the current cell.
    QColor selection;  ///< Around the selected cell.
    QColor accent;
    QColor mark{};  ///< In the corner of a divided cell.
};

struct ColorRect {
    QRectF area;
    QColor color;
    bool hatched = false;  ///< Only the stripes of `hatch` are filled.
};

/// Corners of a convex area; neighbours may be the same point.
using Quad = std::array<QPointF, 4>;

/// Appends the stripes of a hatch, from the bottom left to the top right, within an area. Where
/// they lie does not depend on the area, so that stripes of areas side by side meet.
void addHatch(std::vector<Quad>& stripes, const QRectF& area);

/// What tells an action from its neighbours where colours are alike: an all-in is hatched, and a
/// line parts one size of bet or raise from the next.
enum class ActionMark { None, Sized, AllIn };

/// By the type word of an action, "bet 33%" or "allin".
ActionMark actionMark(const QString& actionType);

struct LabelPlace {
    int hand = 0;
    QRectF cell;
    bool dimmed = false;
};

/// Everything that can be seen of a hand matrix, apart from how it reaches the screen.
struct HandMatrixPicture {
    HandGrid grid;
    HandMatrixPalette palette;
    std::array<HandCell, handCount> cells;
    std::vector<QColor> actionColors;     ///< In the order of the shares.
    std::vector<ActionMark> actionMarks;  ///< Likewise; none for those beyond its end.
    bool fillFromBottom = false;  ///< Weights fill cells from the bottom, not from the left.
    bool showEmptyLabels = true;
    int hovered = -1;   ///< Cell with the thick border; -1 for none, as for the next two.
    int selected = -1;  ///< Cell framed as chosen.
    std::bitset<handCount> locked;         ///< Cells with a padlock in their corner.
    int current = -1;                      ///< Cell with the focus ring of the keyboard.
    std::array<double, handCount> lift{};  ///< 0 for a cell at rest, 1 for one fully raised.

    /// Whether the hand is shown as a mix of actions: its shares fit the actions.
    bool isMixed(int hand) const;

    /// All rectangles from back to front; raised cells come after those at rest.
    std::vector<ColorRect> rects() const;

    /// The labels to draw. Their cells are as large as `rects` draws them.
    std::vector<LabelPlace> labels() const;

  private:
    QRectF drawnCell(int hand) const;
    void addCell(std::vector<ColorRect>& rects, int hand) const;
    ActionMark markOf(std::size_t action) const;
    void addShares(std::vector<ColorRect>& rects, const QRectF& mask, int hand) const;
};

/// All labels drawn once: square tiles in the order of the grid, each with its text in the middle.
struct LabelSheet {
    QImage image;
    int tile = 0;        ///< Side of a tile, in pixels of the image.
    double scale = 1.0;  ///< Pixels of the image for each pixel of the grid.

    QRect source(int hand) const;

    /// Where a tile goes so that its text stands in the middle of a cell and, on a cell at rest,
    /// keeps its pixels.
    QRectF target(const QRectF& cell, double restingSize) const;
};

/// Draws the labels for cells of a size, with `scale` image pixels for each pixel of it. A faint
/// line of the halo's colour around each glyph keeps it legible on any fill. A font whose labels
/// are too wide for the cell is made smaller until they fit.
LabelSheet drawLabels(double cellSize, double scale, QFont font, const QColor& color,
                      const QColor& halo);

}  // namespace tidewell
