#include "app/qt/SoftwareCanvasNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace veltra {

namespace {

QSize pixelSize(QSizeF size, qreal ratio)
{
    return {static_cast<int>(std::ceil(size.width() * ratio)), static_cast<int>(std::ceil(size.height() * ratio))};
}

PixelImage wholeOf(QImage& image)
{
    return {reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
            static_cast<int>(image.bytesPerLine() / 4)};
}

// Formats whose pixels are 0xAARRGGBB words, as the rasteriser writes them.
bool takesOurPixels(const QImage& image)
{
    return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32_Premultiplied;
}

} // namespace

SoftwareCanvasNode::SoftwareCanvasNode(QQuickWindow* window)
    : window_(window)
{
}

void SoftwareCanvasNode::setFrame(QSizeF size, const Backdrop& backdrop)
{
    if (backdrop != backdrop_)
        backdropImage_ = {};
    size_ = size;
    backdrop_ = backdrop;
}

QSGRenderNode::RenderingFlags SoftwareCanvasNode::flags() const
{
    RenderingFlags flags = BoundedRectRendering;
    if (backdrop_.opaque())
        flags |= OpaqueRendering;
    return flags;
}

void SoftwareCanvasNode::render(const RenderState* state)
{
    auto* painter = static_cast<QPainter*>(
        window_->rendererInterface()->getResource(window_, QSGRendererInterface::PainterResource));
    if (!painter || !painter->device() || size_.isEmpty())
        return;
    const QRegion* clip = state ? state->clipRegion() : nullptr;
    if (!renderInPlace(*painter, clip))
        renderThroughPainter(*painter, clip);
}

bool SoftwareCanvasNode::renderInPlace(QPainter& painter, const QRegion* clip)
{
    QPaintDevice* device = painter.device();
    const QTransform transform = matrix()->toTransform();
    if (device->devType() != QInternal::Image || transform.type() > QTransform::TxTranslate ||
        inheritedOpacity() < 1.0)
        return false;
    auto& image = *static_cast<QImage*>(device);
    if (!takesOurPixels(image))
        return false;

    // The item on the window's pixel grid, as a painter would place an image.
    const qreal ratio = image.devicePixelRatio();
    const QPoint origin(qRound(transform.dx() * ratio), qRound(transform.dy() * ratio));
    const QRect item(origin, pixelSize(size_, ratio));
    // Only inside the region asked for: outside it the window's pixels may
    // belong to items above this one that are not repainted.
    QRegion region = clip && !clip->isEmpty() ? QTransform::fromScale(ratio, ratio).map(*clip) : QRegion(item);
    region &= item & image.rect();
    const PixelImage window = wholeOf(image);
    for (const QRect& r : region) {
        const PixelImage part{window.pixels + static_cast<std::ptrdiff_t>(r.y()) * window.stride + r.x(), r.width(),
                              r.height(), window.stride};
        drawPart(part, origin - r.topLeft(), ratio);
    }
    return true;
}

void SoftwareCanvasNode::renderThroughPainter(QPainter& painter, const QRegion* clip)
{
    const qreal ratio = painter.device()->devicePixelRatio();
    const QSize pixels = pixelSize(size_, ratio);
    if (frame_.size() != pixels)
        frame_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    if (!backdrop_.opaque())
        frame_.fill(Qt::transparent);
    drawPart(wholeOf(frame_), {}, ratio);
    frame_.setDevicePixelRatio(ratio);

    if (clip && !clip->isEmpty())
        painter.setClipRegion(*clip, Qt::ReplaceClip); // in window coordinates: before the transform
    painter.setTransform(matrix()->toTransform());
    painter.setOpacity(inheritedOpacity());
    painter.drawImage(QPointF(0, 0), frame_);
}

// On an opaque backdrop, the rows between its rounded corners start out
// alike, so the drawing's part that is the same on every row is drawn on
// one of them and copied to the rest.
void SoftwareCanvasNode::drawPart(const PixelImage& part, QPoint origin, qreal ratio)
{
    const Placement placement{static_cast<float>(ratio), static_cast<float>(origin.x()),
                              static_cast<float>(origin.y())};
    RowRange alike;
    if (backdrop_.opaque()) {
        const RowRange item = alikeRows(ratio);
        alike = {std::clamp(item.first + origin.y(), 0, part.height), std::clamp(item.end + origin.y(), 0, part.height)};
        fillBackdrop(part, origin, ratio, {alike.first + 1, alike.end});
    }
    rasterizeTriangles(everyRow_, rest_, part, placement, alike);
}

RowRange SoftwareCanvasNode::alikeRows(qreal ratio) const
{
    const int cornerRows = static_cast<int>(std::ceil(backdrop_.radius * ratio)) + 1;
    // A last row that the item only partly covers is not like the others.
    const int wholeRows = static_cast<int>(std::floor(size_.height() * ratio));
    return {cornerRows, std::max(cornerRows, wholeRows - cornerRows)};
}

void SoftwareCanvasNode::fillBackdrop(const PixelImage& part, QPoint origin, qreal ratio, RowRange skip)
{
    const QSize pixels = pixelSize(size_, ratio);
    if (backdropImage_.size() != pixels) {
        backdropImage_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        backdropImage_.fill(backdrop_.surround);
        QPainter painter(&backdropImage_);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(ratio, ratio);
        painter.setPen(Qt::NoPen);
        painter.setBrush(backdrop_.panel);
        painter.drawRoundedRect(QRectF(QPointF(0, 0), size_), backdrop_.radius, backdrop_.radius);
    }
    for (int row = 0; row < part.height; ++row) {
        if (row >= skip.first && row < skip.end)
            continue;
        const auto* source = reinterpret_cast<const std::uint32_t*>(backdropImage_.constScanLine(row - origin.y()));
        std::memcpy(part.pixels + static_cast<std::ptrdiff_t>(row) * part.stride, source - origin.x(),
                    static_cast<std::size_t>(part.width) * sizeof(std::uint32_t));
    }
}

} // namespace veltra
