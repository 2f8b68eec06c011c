#pragma once

#include "views/TriangleCanvas.h"
#include "views/TriangleRasterizer.h"

#include <QColor>
#include <QImage>
#include <QSGRenderNode>

class QPainter;
class QQuickWindow;

namespace veltra {

// What lies behind a view: a rounded panel on a surround. Opaque, the view
// paints it itself and the renderer skips whatever is underneath.
struct Backdrop {
    QColor panel = Qt::transparent;
    qreal radius = 0;
    QColor surround = Qt::transparent;

    bool opaque() const { return panel.alpha() == 255 && surround.alpha() == 255; }
    bool operator==(const Backdrop&) const = default;
};

// A view's triangles in Qt Quick's software renderer. The renderer paints
// the window into one image; this node rasterises straight into that image,
// inside the region the renderer asks for, so a frame costs no copies: no
// image of our own, no hand-over to the renderer, no blit into the window.
// Where that image cannot take our pixels (another pixel format, a rotated
// or translucent item), the node draws an image of its own through the
// renderer's painter instead.
class SoftwareCanvasNode : public QSGRenderNode {
public:
    explicit SoftwareCanvasNode(QQuickWindow* window);

    // The frame to show, set while the scene is synchronised: the canvases
    // are filled in item units (see RowSplitCanvas), `size` is the item's.
    TriangleCanvas& everyRow() { return everyRow_; }
    TriangleCanvas& rest() { return rest_; }
    void setFrame(QSizeF size, const Backdrop& backdrop);

    void render(const RenderState* state) override;
    StateFlags changedStates() const override { return {}; }
    RenderingFlags flags() const override;
    QRectF rect() const override { return {QPointF(0, 0), size_}; }

private:
    bool renderInPlace(QPainter& painter, const QRegion* clip);
    void renderThroughPainter(QPainter& painter, const QRegion* clip);
    // The frame over one part of the item, `origin` being where the item's
    // top-left pixel lies relative to the part's.
    void drawPart(const PixelImage& part, QPoint origin, qreal ratio);
    // The item's rows on which the backdrop is the same, in pixels.
    RowRange alikeRows(qreal ratio) const;
    // The backdrop on the part's rows outside `skip`.
    void fillBackdrop(const PixelImage& part, QPoint origin, qreal ratio, RowRange skip);

    QQuickWindow* window_;
    TriangleCanvas everyRow_;
    TriangleCanvas rest_;
    QSizeF size_;
    Backdrop backdrop_;
    QImage backdropImage_; // the whole backdrop, drawn once per size and colour
    QImage frame_;         // for the painter's path only
};

} // namespace veltra
