#include "app/qt/GraphItems.h"

#include "app/qt/QPainterCanvas.h"
#include "views/CullingCanvas.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGGeometryNode>
#include <QSGRendererInterface>
#include <QSGVertexColorMaterial>

#include <algorithm>

namespace veltra {

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

void CanvasItem::drawVisible(Canvas& canvas)
{
    if (!tuner_)
        return;
    const Rect bounds{0, 0, width(), height()};
    CullingCanvas culled(canvas, bounds);
    draw(*tuner_, culled, bounds);
}

void CanvasItem::paint(QPainter* painter)
{
    painter->setRenderHint(QPainter::Antialiasing);
    QPainterCanvas canvas(*painter);
    drawVisible(canvas);
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
    triangles_.clear();
    triangles_.setDevicePixel(1.0 / window()->effectiveDevicePixelRatio());
    drawVisible(triangles_);

    QSGGeometry* geometry = node->geometry();
    const auto& vertices = triangles_.vertices();
    const auto& indices = triangles_.indices();
    geometry->allocate(static_cast<int>(vertices.size()), static_cast<int>(indices.size()));
    std::copy(vertices.begin(), vertices.end(), geometry->vertexDataAsColoredPoint2D());
    std::copy(indices.begin(), indices.end(), geometry->indexDataAsUInt());
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
