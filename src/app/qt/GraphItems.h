#pragma once

#include "app/qt/TriangleCanvas.h"
#include "app/qt/TunerScreen.h"

#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace veltra {

class Canvas;

// An item that draws one of the screen's views and redraws when the view
// asks for it. Where the scene graph renders through a graphics API the
// drawing becomes one geometry node of coloured triangles, rebuilt in place
// each frame; the software renderer cannot draw custom geometry, so there
// the view is painted through QPainter as a painted item does. Both skip
// what lies outside the item.
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
    // Draws the view, culled to the item, onto the given canvas.
    void drawVisible(Canvas& canvas);

    QPointer<TunerScreen> tuner_;
    TriangleCanvas triangles_; // reused from frame to frame
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
