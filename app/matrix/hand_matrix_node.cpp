#include "app/matrix/hand_matrix_node.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGGeometryNode>
#include <QSGImageNode>
#include <QSGOpacityNode>
#include <QSGTexture>
#include <QSGTextureMaterial>
#include <QSGVertexColorMaterial>
#include <cmath>
#include <vector>

namespace tidewell {
namespace {

constexpr double dimmedLabel = 0.6;  // opacity of the label of an empty cell
constexpr int cornersPerRect = 6;    // two triangles

// Room for rectangles in a geometry that is drawn as single triangles.
template <typename Point>
Point* resize(QSGGeometry& geometry, std::size_t rects) {
    const int corners = static_cast<int>(rects) * cornersPerRect;
    if (geometry.vertexCount() != corners) {
        geometry.allocate(corners);
    }
    return static_cast<Point*>(geometry.vertexData());
}

// The corners of two triangles, each given as left or right and top or bottom.
template <typename Set>
void setCorners(const Set& set) {
    set(false, false);
    set(true, false);
    set(false, true);
    set(false, true);
    set(true, false);
    set(true, true);
}

// One rectangle or stripe after the other, later ones over earlier ones.
class RectsNode : public QSGGeometryNode {
  public:
    RectsNode() : geometry_(QSGGeometry::defaultAttributes_ColoredPoint2D(), 0) {
        geometry_.setDrawingMode(QSGGeometry::DrawTriangles);
        geometry_.setVertexDataPattern(QSGGeometry::DynamicPattern);
        setGeometry(&geometry_);
        setMaterial(&material_);
    }

    void show(const std::vector<ColorRect>& rects) {
        stripes_.clear();
        ends_.clear();
        for (const ColorRect& rect : rects) {
            if (rect.hatched) {
                addHatch(stripes_, rect.area);
                ends_.push_back(stripes_.size());
            }
        }
        const std::size_t quads = rects.size() - ends_.size() + stripes_.size();
        auto* corner = resize<QSGGeometry::ColoredPoint2D>(geometry_, quads);
        auto end = ends_.cbegin();
        std::size_t stripe = 0;
        for (const ColorRect& rect : rects) {
            const QRgb color = qPremultiply(rect.color.rgba());
            const auto part = [](int value) { return static_cast<uchar>(value); };
            const auto add = [&](double x, double y) {
                corner++->set(static_cast<float>(x), static_cast<float>(y), part(qRed(color)),
                              part(qGreen(color)), part(qBlue(color)), part(qAlpha(color)));
            };
            if (!rect.hatched) {
                const QRectF& area = rect.area;
                setCorners([&](bool right, bool bottom) {
                    add(right ? area.right() : area.left(), bottom ? area.bottom() : area.top());
                });
                continue;
            }
            for (; stripe < *end; ++stripe) {
                for (const std::size_t i : {0U, 1U, 2U, 0U, 2U, 3U}) {
                    add(stripes_[stripe][i].x(), stripes_[stripe][i].y());
                }
            }
            ++end;
        }
        markDirty(DirtyGeometry);
    }

  private:
    std::vector<Quad> stripes_;      // of all hatched areas, one after the other,
    std::vector<std::size_t> ends_;  // and where those of each end.
    QSGGeometry geometry_;
    QSGVertexColorMaterial material_;
};

// Tiles of the label sheet.
class LabelsNode : public QSGGeometryNode {
  public:
    LabelsNode() : geometry_(QSGGeometry::defaultAttributes_TexturedPoint2D(), 0) {
        geometry_.setDrawingMode(QSGGeometry::DrawTriangles);
        geometry_.setVertexDataPattern(QSGGeometry::DynamicPattern);
        material_.setFiltering(QSGTexture::Linear);
        setGeometry(&geometry_);
        setMaterial(&material_);
    }

    void setTexture(QSGTexture* texture) {
        material_.setTexture(texture);
        markDirty(DirtyMaterial);
    }

    void show(const std::vector<LabelPlace>& labels, bool dimmed, const LabelSheet& sheet,
              double restingSize) {
        std::size_t count = 0;
        for (const LabelPlace& label : labels) {
            count += label.dimmed == dimmed ? 1U : 0U;
        }
        auto* corner = resize<QSGGeometry::TexturedPoint2D>(geometry_, count);
        const QRectF whole = sheet.image.rect();
        for (const LabelPlace& label : labels) {
            if (label.dimmed != dimmed) {
                continue;
            }
            const QRectF source = sheet.source(label.hand);
            const QRectF target = sheet.target(label.cell, restingSize);
            setCorners([&](bool right, bool bottom) {
                corner++->set(
                    static_cast<float>(right ? target.right() : target.left()),
                    static_cast<float>(bottom ? target.bottom() : target.top()),
                    static_cast<float>((right ? source.right() : source.left()) / whole.width()),
                    static_cast<float>((bottom ? source.bottom() : source.top()) / whole.height()));
            });
        }
        markDirty(DirtyGeometry);
    }

  private:
    QSGGeometry geometry_;
    QSGTextureMaterial material_;
};

class GeometryMatrixNode : public HandMatrixNode {
  public:
    explicit GeometryMatrixNode(QQuickWindow* window)
        : window_(window), rects_(new RectsNode), bright_(new LabelsNode), dimmed_(new LabelsNode) {
        auto* const opacity = new QSGOpacityNode;
        opacity->setOpacity(dimmedLabel);
        opacity->appendChildNode(dimmed_);
        appendChildNode(rects_);
        appendChildNode(bright_);
        appendChildNode(opacity);
    }

    void show(const HandMatrixPicture& picture, const LabelSheet& sheet) override {
        if (sheetKey_ != sheet.image.cacheKey()) {
            sheetKey_ = sheet.image.cacheKey();
            std::unique_ptr<QSGTexture> texture(
                window_->createTextureFromImage(sheet.image, QQuickWindow::TextureHasAlphaChannel));
            bright_->setTexture(texture.get());
            dimmed_->setTexture(texture.get());
            texture_ = std::move(texture);
        }
        rects_->show(picture.rects());
        const std::vector<LabelPlace> labels = picture.labels();
        bright_->show(labels, false, sheet, picture.grid.cellSize);
        dimmed_->show(labels, true, sheet, picture.grid.cellSize);
    }

  private:
    QQuickWindow* window_;
    qint64 sheetKey_ = 0;
    std::unique_ptr<QSGTexture> texture_;
    RectsNode* rects_;    // This and the next two belong to the tree of nodes.
    LabelsNode* bright_;  // labels of hands with a weight
    LabelsNode* dimmed_;
};

// The software renderer knows no geometry, so there the matrix is painted into an image.
class ImageMatrixNode : public HandMatrixNode {
  public:
    explicit ImageMatrixNode(QQuickWindow* window)
        : window_(window), image_(window->createImageNode()) {
        image_->setOwnsTexture(true);
        image_->setFiltering(QSGTexture::Nearest);
        appendChildNode(image_);
    }

    void show(const HandMatrixPicture& picture, const LabelSheet& sheet) override {
        const QRectF area = bounds(picture);
        QImage canvas((area.size() * sheet.scale).toSize().expandedTo({1, 1}),
                      QImage::Format_ARGB32_Premultiplied);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.scale(sheet.scale, sheet.scale);
        painter.translate(-area.topLeft());
        std::vector<Quad> stripes;
        for (const ColorRect& rect : picture.rects()) {
            if (!rect.hatched) {
                painter.fillRect(rect.area, rect.color);
                continue;
            }
            stripes.clear();
            addHatch(stripes, rect.area);
            painter.setPen(Qt::NoPen);
            painter.setBrush(rect.color);
            for (const Quad& stripe : stripes) {
                painter.drawConvexPolygon(stripe.data(), static_cast<int>(stripe.size()));
            }
        }
        for (const LabelPlace& label : picture.labels()) {
            painter.setOpacity(label.dimmed ? dimmedLabel : 1.0);
            painter.drawImage(sheet.target(label.cell, picture.grid.cellSize), sheet.image,
                              sheet.source(label.hand));
        }
        painter.end();
        image_->setTexture(window_->createTextureFromImage(canvas));
        image_->setRect(area);
    }

  private:
    // The grid and what raised cells and the focus ring add around it, in whole pixels.
    static QRectF bounds(const HandMatrixPicture& picture) {
        const QRectF cells = picture.grid.cell(0) | picture.grid.cell(handCount - 1);
        const double margin = std::ceil(picture.grid.cellSize / 8.0);
        return cells.adjusted(-margin, -margin, margin, margin).toAlignedRect();
    }

    QQuickWindow* window_;
    QSGImageNode* image_;  // Belongs to the tree of nodes.
};

}  // namespace

std::unique_ptr<HandMatrixNode> HandMatrixNode::create(QQuickWindow* window) {
    if (window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software) {
        return std::make_unique<ImageMatrixNode>(window);
    }
    return std::make_unique<GeometryMatrixNode>(window);
}

}  // namespace tidewell
