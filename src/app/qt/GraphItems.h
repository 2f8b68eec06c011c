#pragma once

#include "app/qt/TunerScreen.h"
#include "views/TriangleCanvas.h"

#include <QColor>
#include <QImage>

#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace veltra {

class Canvas;

// An item that draws one of the screen's views and redraws when the view
// asks for it. The view's primitives become one list of coloured triangles,
// rebuilt in place each frame, of what lies inside the item. Where the scene
// graph renders through a graphics API the list is one geometry node; the
// software renderer cannot draw custom geometry, so there our rasteriser
// fills the same triangles into an image that the item paints.
//
// With a backdrop set, the software path paints the item opaque: first what
// lies behind the view (a rounded panel of `backdrop` on `surround`), then
// the view. The renderer then neither paints the items underneath nor
// blends the frame onto them, which cost more than the view itself. Items
// behind it should show the same backdrop, for the other renderers.
class CanvasItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(veltra::TunerScreen* tuner READ tuner WRITE setTuner NOTIFY tunerChanged)
    Q_PROPERTY(QColor backdrop MEMBER backdrop_ NOTIFY backdropChanged)
    Q_PROPERTY(qreal backdropRadius MEMBER backdropRadius_ NOTIFY backdropChanged)
    Q_PROPERTY(QColor surround MEMBER surround_ NOTIFY backdropChanged)

public:
    explicit CanvasItem(QQuickItem* parent = nullptr);
    TunerScreen* tuner() const { return tuner_; }
    void setTuner(TunerScreen* tuner);
    void paint(QPainter* painter) override;

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;

signals:
    void tunerChanged();
    void backdropChanged();

protected:
    virtual void connectRedraw(TunerScreen& tuner) = 0;
    virtual void draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds) = 0;

private:
    // The view's visible part as triangles, in item units of devicePixel.
    void drawTriangles(double devicePixel);
    // The frame's first layer: the backdrop, drawn once per size and
    // colour and copied from then on; or transparency.
    void startFrame(QSize pixels, qreal ratio);

    QPointer<TunerScreen> tuner_;
    TriangleCanvas triangles_; // reused from frame to frame
    QImage image_;             // the software renderer's frame, reused likewise
    QImage backdropImage_;
    QColor backdrop_ = Qt::transparent;
    qreal backdropRadius_ = 0;
    QColor surround_ = Qt::transparent;
};

// The live pitch graph.
class LiveGraph : public veltra::CanvasItem { // qualified for the QML type registry
    Q_OBJECT
    QML_ELEMENT
public:
    using CanvasItem::CanvasItem;

protected:
    void connectRedraw(TunerScreen& tuner) override;
    void draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds) override;
};

// The piano keyboard.
class PianoKeyboard : public veltra::CanvasItem {
    Q_OBJECT
    QML_ELEMENT
public:
    using CanvasItem::CanvasItem;

protected:
    void connectRedraw(TunerScreen& tuner) override;
    void draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds) override;
};

} // namespace veltra
