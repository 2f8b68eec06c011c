#pragma once

#include "app/qt/TunerScreen.h"
#include "views/TriangleCanvas.h"

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
class CanvasItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(veltra::TunerScreen* tuner READ tuner WRITE setTuner NOTIFY tunerChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;
    TunerScreen* tuner() const { return tuner_; }
    void setTuner(TunerScreen* tuner);
    void paint(QPainter* painter) override;

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;

signals:
    void tunerChanged();

protected:
    virtual void connectRedraw(TunerScreen& tuner) = 0;
    virtual void draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds) = 0;

private:
    // The view's visible part as triangles, in item units of devicePixel.
    void drawTriangles(double devicePixel);

    QPointer<TunerScreen> tuner_;
    TriangleCanvas triangles_; // reused from frame to frame
    QImage image_;             // the software renderer's frame, reused likewise
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
