#include "app/qt/GraphItems.h"

#include "views/CullingCanvas.h"
#include "views/TriangleRasterizer.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGGeometryNode>
#include <QSGRendererInterface>
#include <QSGVertexColorMaterial>

#include <cmath>
#include <cstddef>
#include <cstring>

namespace veltra {

CanvasItem::CanvasItem(QQuickItem* parent)
    : QQuickPaintedItem(parent)
{
    connect(this, &CanvasItem::backdropChanged, this, [this] {
        backdropImage_ = {};
        setOpaquePainting(backdrop_.alpha() == 255 && surround_.alpha() == 255);
        update();
    });
}

void CanvasItem::setTuner(TunerScreen* tuner)
{
    if (tuner == tuner_)
        return;
    if (tuner_)
        disconnect(tuner_, nullptr, this, nullptr);
    tuner_ = tuner;
    if (tuner_)
        connectRedraw(*tuner_);
    update();
    emit tunerChanged();
}

// Our vertices go to the GPU as they are.
static_assert(sizeof(ColoredVertex) == sizeof(QSGGeometry::ColoredPoint2D));
static_assert(offsetof(ColoredVertex, r) == offsetof(QSGGeometry::ColoredPoint2D, r));
static_assert(offsetof(ColoredVertex, a) == offsetof(QSGGeometry::ColoredPoint2D, a));

void CanvasItem::drawTriangles(double devicePixel)
{
    triangles_.clear();
    triangles_.setDevicePixel(devicePixel);
    if (!tuner_)
        return;
    const Rect bounds{0, 0, width(), height()};
    CullingCanvas culled(triangles_, bounds);
    draw(*tuner_, culled, bounds);
}

// The software renderer's path. Painting the triangles ourselves keeps the
// frame on this thread: Qt's raster painter hands every fill taller than a
// few dozen rows to its thread pool, and those hand-overs cost more than
// the drawing itself.
void CanvasItem::paint(QPainter* painter)
{
    const qreal ratio = painter->device()->devicePixelRatio();
    const QSize pixels(static_cast<int>(std::ceil(width() * ratio)), static_cast<int>(std::ceil(height() * ratio)));
    startFrame(pixels, ratio);
    if (image_.isNull())
        return;
    drawTriangles(1.0 / ratio);
    rasterizeTriangles(triangles_.vertices(), triangles_.indices(),
                       {reinterpret_cast<std::uint32_t*>(image_.bits()), image_.width(), image_.height(),
                        static_cast<int>(image_.bytesPerLine() / 4)},
                       static_cast<float>(ratio));
    image_.setDevicePixelRatio(ratio);
    painter->setCompositionMode(QPainter::CompositionMode_Source);
    painter->drawImage(QPointF(0, 0), image_);
}

void CanvasItem::startFrame(QSize pixels, qreal ratio)
{
    // Opaque, the frame has the format of the renderer's own images, so
    // that handing it over is a plain copy.
    const QImage::Format format = opaquePainting() ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    if (image_.size() != pixels || image_.format() != format)
        image_ = QImage(pixels, format);
    if (!opaquePainting()) {
        image_.fill(Qt::transparent);
        return;
    }
    if (backdropImage_.size() != pixels) {
        backdropImage_ = QImage(pixels, format);
        backdropImage_.fill(surround_);
        QPainter painter(&backdropImage_);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(ratio, ratio);
        painter.setPen(Qt::NoPen);
        painter.setBrush(backdrop_);
        painter.drawRoundedRect(QRectF(0, 0, width(), height()), backdropRadius_, backdropRadius_);
    }
    if (!image_.isNull() && backdropImage_.size() == image_.size())
        std::memcpy(image_.bits(), backdropImage_.constBits(), static_cast<std::size_t>(image_.sizeInBytes()));
}

QSGNode* CanvasItem::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data)
{
    if (window()->rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
        return QQuickPaintedItem::updatePaintNode(oldNode, data);

    auto* node = static_cast<QSGGeometryNode*>(oldNode);
    if (!node) {
        node = new QSGGeometryNode;
        auto* geometry = new QSGGeometry(QSGGeometry::defaultAttributes_ColoredPoint2D(), 0, 0,
                                         QSGGeometry::UnsignedIntType);
        geometry->setDrawingMode(QSGGeometry::DrawTriangles);
        node->setGeometry(geometry);
        node->setFlag(QSGNode::OwnsGeometry);
        node->setMaterial(new QSGVertexColorMaterial);
        node->setFlag(QSGNode::OwnsMaterial);
    }
    drawTriangles(1.0 / window()->effectiveDevicePixelRatio());

    QSGGeometry* geometry = node->geometry();
    const auto& vertices = triangles_.vertices();
    const auto& indices = triangles_.indices();
    geometry->allocate(static_cast<int>(vertices.size()), static_cast<int>(indices.size()));
    std::memcpy(geometry->vertexDataAsColoredPoint2D(), vertices.data(), vertices.size() * sizeof(ColoredVertex));
    std::memcpy(geometry->indexDataAsUInt(), indices.data(), indices.size() * sizeof(std::uint32_t));
    node->markDirty(QSGNode::DirtyGeometry);
    return node;
}

void LiveGraph::connectRedraw(TunerScreen& tuner)
{
    connect(&tuner, &TunerScreen::graphNeedsDisplay, this, [this] { update(); });
}

void LiveGraph::draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds)
{
    tuner.liveView().draw(&canvas, bounds);
}

void PianoKeyboard::connectRedraw(TunerScreen& tuner)
{
    connect(&tuner, &TunerScreen::pianoNeedsDisplay, this, [this] { update(); });
}

void PianoKeyboard::draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds)
{
    tuner.pianoView().draw(&canvas, bounds);
}

} // namespace veltra
