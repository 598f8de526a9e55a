#include "app/matrix/hand_matrix_picture.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <utility>

namespace tidewell {
namespace {

constexpr double restingBorder = 1.0;
constexpr double frameWidth = 2.0;   // of the hovered, selected or current cell
constexpr double markShare = 0.14;   // of a cell's side, for the mark of a divided one
constexpr double raisedScale = 1.1;  // of a cell with lift 1
constexpr float accentAlpha = 0.8F;
constexpr float shareOpacity = 0.85F;
constexpr float haloOpacity = 0.85F;
constexpr float hatchOpacity = 0.4F;
constexpr double hatchPeriod = 7.0;  // pixels, along an edge
constexpr double hatchWidth = 2.5;   // pixels, along an edge
constexpr double lineBetweenSizes = 1.0;
constexpr double haloWidth = 2.0;  // half of it lies under the glyph

// NaN becomes 0.
double clamped(double value) {
    return value > 0.0 ? std::min(value, 1.0) : 0.0;
}

QColor withAlpha(QColor color, float alpha) {
    color.setAlphaF(alpha);
    return color;
}

// The part of a cell that its weight covers.
QRectF filledPart(const QRectF& cell, double weight, bool fromBottom) {
    if (fromBottom) {
        const double height = cell.height() * weight;
        return {cell.left(), cell.bottom() - height, cell.width(), height};
    }
    return {cell.left(), cell.top(), cell.width() * weight, cell.height()};
}

// Dark stripes on what is bright, and the other way round.
QColor hatchColor(const QColor& ground) {
    return withAlpha(qGray(ground.rgb()) < 96 ? Qt::white : Qt::black, hatchOpacity);
}

// A line of a width along the inner side of an area's edges.
void addFrame(std::vector<ColorRect>& rects, const QRectF& area, double width,
              const QColor& color) {
    const double inner = area.height() - 2.0 * width;
    rects.push_back({{area.left(), area.top(), area.width(), width}, color});
    rects.push_back({{area.left(), area.bottom() - width, area.width(), width}, color});
    rects.push_back({{area.left(), area.top() + width, width, inner}, color});
    rects.push_back({{area.right() - width, area.top() + width, width, inner}, color});
}

// A padlock on a plate, in the upper right corner of a cell, as small as it can be told from a dot:
// the label has the rest. Whole pixels on a cell at rest.
void addPadlock(std::vector<ColorRect>& rects, const QRectF& cell, const QColor& ink,
                const QColor& plate) {
    const double unit = std::max(1.0, std::floor(cell.width() / 22.0));
    const QPointF corner = cell.topRight() - QPointF(7.0 * unit, 0.0);
    const auto part = [&](double x, double y, double width, double height) {
        return QRectF(corner + QPointF(x, y) * unit, QSizeF(width, height) * unit);
    };
    rects.push_back({part(0, 0, 7, 7), plate});
    rects.push_back({part(2, 1, 3, 1), ink});  // the shackle
    rects.push_back({part(2, 2, 1, 1), ink});
    rects.push_back({part(4, 2, 1, 1), ink});
    rects.push_back({part(1, 3, 5, 3), ink});
}

const QColor& baseColor(const HandMatrixPalette& palette, int hand) {
    const int row = hand / handGridSide;
    const int column = hand % handGridSide;
    if (row == column) {
        return palette.pair;
    }
    return row < column ? palette.suited : palette.offsuit;
}

std::array<QString, handCount> makeLabels() {
    const QString ranks = QStringLiteral("AKQJT98765432");
    std::array<QString, handCount> labels;
    for (int hand = 0; hand < handCount; ++hand) {
        const auto [higher, lower] = std::minmax({hand / handGridSide, hand % handGridSide});
        QString& label = labels[static_cast<std::size_t>(hand)];
        label = QString(ranks[higher]) + ranks[lower];
        if (higher != lower) {
            label += higher == hand / handGridSide ? 's' : 'o';
        }
    }
    return labels;
}

const std::array<QString, handCount>& allLabels() {
    static const std::array<QString, handCount> labels = makeLabels();
    return labels;
}

// Where the way from `from` by `way` is inside an area, as parts of the way from 0 to 1; nothing
// where it only touches it.
std::optional<double> entryInto(const QRectF& area, QPointF from, QPointF way) {
    double enter = 0.0;
    double leave = 1.0;
    const auto clip = [&](double start, double step, double low, double high) {
        if (step == 0.0) {
            return start >= low && start < high;
        }
        const auto [first, last] = std::minmax({(low - start) / step, (high - start) / step});
        enter = std::max(enter, first);
        leave = std::min(leave, last);
        return enter < leave;
    };
    const bool inside = clip(from.x(), way.x(), area.left(), area.right()) &&
                        clip(from.y(), way.y(), area.top(), area.bottom());
    return inside ? std::optional(enter) : std::nullopt;
}

double widestLabel(const QFontMetricsF& metrics) {
    double widest = 0.0;
    for (int hand = 0; hand < handCount; ++hand) {
        widest = std::max(widest, metrics.horizontalAdvance(handLabel(hand)));
    }
    return widest;
}

}  // namespace

const QString& handLabel(int hand) {
    return allLabels()[static_cast<std::size_t>(hand)];
}

int handOfLabel(const QString& label) {
    const auto place = std::ranges::find(allLabels(), label);
    return place == allLabels().end() ? -1 : static_cast<int>(place - allLabels().begin());
}

QRectF HandGrid::cell(int index) const {
    const double step = cellSize + spacing;
    return {step * (index % handGridSide), step * (index / handGridSide), cellSize, cellSize};
}

int HandGrid::indexAt(QPointF point) const {
    const double step = cellSize + spacing;
    const double column = std::floor(point.x() / step);
    const double row = std::floor(point.y() / step);
    const auto outside = [](double place) { return !(place >= 0.0 && place < handGridSide); };
    if (outside(column) || outside(row)) {
        return -1;
    }
    const int index = static_cast<int>(row) * handGridSide + static_cast<int>(column);
    const QPointF inCell = point - cell(index).topLeft();
    return inCell.x() < cellSize && inCell.y() < cellSize ? index : -1;
}

std::vector<int> HandGrid::cellsBetween(QPointF from, QPointF to) const {
    std::vector<std::pair<double, int>> crossed;
    for (int index = 0; index < handCount; ++index) {
        if (const auto entry = entryInto(cell(index), from, to - from)) {
            crossed.emplace_back(*entry, index);
        }
    }
    std::ranges::sort(crossed);
    std::vector<int> cells;
    std::ranges::transform(crossed, std::back_inserter(cells), &std::pair<double, int>::second);
    return cells;
}

void addHatch(std::vector<Quad>& stripes, const QRectF& area) {
    // A stripe lies between two lines of equal x + y. Each is cut off at the edges of the area, and
    // what lies between goes round the corner if the stripe holds one.
    const double first = area.left() + area.top();
    const double last = area.right() + area.bottom();
    const auto lowerEnd = [&](double sum) {
        const double x = std::max(area.left(), sum - area.bottom());
        return QPointF(x, sum - x);
    };
    const auto upperEnd = [&](double sum) {
        const double y = std::max(area.top(), sum - area.right());
        return QPointF(sum - y, y);
    };
    for (double start = std::floor(first / hatchPeriod) * hatchPeriod; start < last;
         start += hatchPeriod) {
        const double from = std::max(start, first);
        const double to = std::min(start + hatchWidth, last);
        if (from >= to) {
            continue;
        }
        const auto holds = [&](QPointF corner) {
            return from < corner.x() + corner.y() && corner.x() + corner.y() < to;
        };
        const QPointF begin = lowerEnd(from);
        const QPointF end = upperEnd(from);
        const QPointF low = lowerEnd(to);
        const QPointF high = upperEnd(to);
        const bool roundLow = holds(area.bottomLeft());
        const bool roundHigh = holds(area.topRight());
        if (roundLow || roundHigh) {
            stripes.push_back({begin, roundLow ? area.bottomLeft() : begin, low, high});
            stripes.push_back({begin, high, roundHigh ? area.topRight() : high, end});
        } else {
            stripes.push_back({begin, low, high, end});
        }
    }
}

ActionMark actionMark(const QString& actionType) {
    if (actionType.startsWith(QLatin1String("bet"), Qt::CaseInsensitive) ||
        actionType.startsWith(QLatin1String("raise"), Qt::CaseInsensitive)) {
        return ActionMark::Sized;
    }
    const bool isAllIn = actionType.compare(QLatin1String("allin"), Qt::CaseInsensitive) == 0 ||
                         actionType.compare(QLatin1String("all-in"), Qt::CaseInsensitive) == 0;
    return isAllIn ? ActionMark::AllIn : ActionMark::None;
}

bool HandMatrixPicture::isMixed(int hand) const {
    const auto& shares = cells[static_cast<std::size_t>(hand)].shares;
    return !actionColors.empty() && shares.size() == actionColors.size();
}

QRectF HandMatrixPicture::drawnCell(int hand) const {
    const QRectF cell = grid.cell(hand);
    const double grown =
        cell.width() * (raisedScale - 1.0) * lift[static_cast<std::size_t>(hand)] / 2.0;
    return cell.adjusted(-grown, -grown, grown, grown);
}

ActionMark HandMatrixPicture::markOf(std::size_t action) const {
    return action < actionMarks.size() ? actionMarks[action] : ActionMark::None;
}

void HandMatrixPicture::addShares(std::vector<ColorRect>& rects, const QRectF& mask,
                                  int hand) const {
    const HandCell& cell = cells[static_cast<std::size_t>(hand)];
    ActionMark before = ActionMark::None;
    double start = 0.0;
    for (std::size_t i = 0; i < actionColors.size() && start < 1.0; ++i) {
        const double share = cell.shares[i] > 0.0 ? cell.shares[i] : 0.0;
        // The last one ends at the edge, whatever rounding left over.
        const double end = i + 1 == actionColors.size() ? 1.0 : std::min(start + share, 1.0);
        if (end > start) {
            const QColor& color = actionColors[i];
            const QRectF area(mask.left() + mask.width() * start, mask.top(),
                              mask.width() * (end - start), mask.height());
            rects.push_back({area, withAlpha(color, color.alphaF() * shareOpacity)});
            const ActionMark mark = markOf(i);
            if (mark == ActionMark::AllIn) {
                rects.push_back({area, hatchColor(color), true});
            } else if (mark == ActionMark::Sized && before == mark &&
                       area.width() > 2.0 * lineBetweenSizes) {
                rects.push_back({{area.left(), area.top(), lineBetweenSizes, area.height()},
                                 baseColor(palette, hand)});
            }
            before = mark;
        }
        start += share;
    }
}

void HandMatrixPicture::addCell(std::vector<ColorRect>& rects, int hand) const {
    const HandCell& cell = cells[static_cast<std::size_t>(hand)];
    const QRectF area = drawnCell(hand);
    rects.push_back({area, baseColor(palette, hand)});
    const double weight = clamped(cell.weight);
    if (weight > 0.0) {
        const QRectF mask = filledPart(area, weight, fillFromBottom);
        if (isMixed(hand)) {
            addShares(rects, mask, hand);
        } else {
            rects.push_back(
                {mask, cell.color.isValid() ? cell.color : withAlpha(palette.accent, accentAlpha)});
        }
    }
    if (cell.divided) {
        const double side = std::max(3.0, std::round(area.width() * markShare));
        const double inset = restingBorder + 1.0;
        rects.push_back(
            {{area.right() - inset - side, area.top() + inset, side, side}, palette.mark});
    }
    if (hand == hovered) {
        addFrame(rects, area, frameWidth, palette.focus);
    } else {
        addFrame(rects, area, restingBorder, palette.border);
    }
    if (hand == selected) {
        addFrame(rects, area, frameWidth, palette.selection);
    }
    if (locked.test(static_cast<std::size_t>(hand))) {
        addPadlock(rects, area, palette.selection, palette.offsuit);
    }
}

std::vector<ColorRect> HandMatrixPicture::rects() const {
    std::vector<ColorRect> result;
    result.reserve(handCount * (6 + actionColors.size()));
    std::vector<int> raised;
    for (int hand = 0; hand < handCount; ++hand) {
        if (lift[static_cast<std::size_t>(hand)] > 0.0) {
            raised.push_back(hand);
        } else {
            addCell(result, hand);
        }
    }
    std::ranges::sort(raised, {},
                      [this](int hand) { return lift[static_cast<std::size_t>(hand)]; });
    for (const int hand : raised) {
        addCell(result, hand);
    }
    if (current >= 0) {
        // In the gap around the cell, so that it is told from the border of a hovered one.
        const QRectF area = drawnCell(current);
        addFrame(result, area.adjusted(-frameWidth, -frameWidth, frameWidth, frameWidth),
                 frameWidth, palette.focus);
    }
    return result;
}

std::vector<LabelPlace> HandMatrixPicture::labels() const {
    std::vector<LabelPlace> result;
    result.reserve(handCount);
    for (int hand = 0; hand < handCount; ++hand) {
        const bool empty = !(cells[static_cast<std::size_t>(hand)].weight > 0.0);
        if (!empty || showEmptyLabels) {
            result.push_back({hand, drawnCell(hand), empty});
        }
    }
    return result;
}

QRect LabelSheet::source(int hand) const {
    return {hand % handGridSide * tile, hand / handGridSide * tile, tile, tile};
}

QRectF LabelSheet::target(const QRectF& cell, double restingSize) const {
    const double size = tile / scale * cell.width() / restingSize;
    QPointF corner = cell.center() - QPointF(size / 2.0, size / 2.0);
    if (cell.width() <= restingSize) {
        corner = {std::round(corner.x() * scale) / scale, std::round(corner.y() * scale) / scale};
    }
    return {corner, QSizeF(size, size)};
}

LabelSheet drawLabels(double cellSize, double scale, QFont font, const QColor& color,
                      const QColor& halo) {
    LabelSheet sheet;
    sheet.scale = scale;
    sheet.tile = std::max(1, static_cast<int>(std::ceil(cellSize * scale)));
    sheet.image = QImage(sheet.tile * handGridSide, sheet.tile * handGridSide,
                         QImage::Format_ARGB32_Premultiplied);
    sheet.image.fill(Qt::transparent);

    // In pixels of the image, where glyphs are hinted as they will be seen.
    const int pixels = QFontInfo(font).pixelSize();
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels * scale))));
    const double room = sheet.tile - 2.0 * frameWidth * scale;
    const double width = widestLabel(QFontMetricsF(font));
    if (width > room && room > 0.0) {
        font.setPixelSize(std::max(1, static_cast<int>(font.pixelSize() * room / width)));
    }
    const QFontMetricsF metrics(font);
    const double baseline = std::round((sheet.tile + metrics.capHeight()) / 2.0);

    QPainter painter(&sheet.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(color);
    const QPen around(withAlpha(halo, halo.alphaF() * haloOpacity), haloWidth * scale,
                      Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    for (int hand = 0; hand < handCount; ++hand) {
        const QString text = handLabel(hand);
        const double indent = std::round((sheet.tile - metrics.horizontalAdvance(text)) / 2.0);
        const QPointF place = sheet.source(hand).topLeft() + QPointF(indent, baseline);
        QPainterPath outline;
        outline.addText(place, font, text);
        painter.strokePath(outline, around);
        painter.drawText(place, text);
    }
    return sheet;
}

}  // namespace tidewell
