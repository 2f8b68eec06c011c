#pragma once

#include "app/qt/TunerScreen.h"
#include "views/TriangleCanvas.h"

#include <QColor>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace veltra {

class Canvas;

// An item that draws one of the screen's views and redraws when the view
// asks for it. The view's primitives become one list of coloured triangles,
// rebuilt in place each frame, of what lies inside the item. Where the scene
// graph renders through a graphics API the list is one geometry node; the
// software renderer cannot draw custom geometry, so there our rasteriser
// fills the same triangles straight into the window (SoftwareCanvasNode).
//
// With an opaque backdrop set, the software path paints what lies behind
// the view itself (a rounded panel of `backdrop` on `surround`), and the
// renderer neither paints the items underneath nor blends over them, which
// cost more than the view. Items behind it should show the same backdrop,
// for the other renderers.
class CanvasItem : public QQuickItem {
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

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

signals:
    void tunerChanged();
    void backdropChanged();

protected:
    virtual void connectRedraw(TunerScreen& tuner) = 0;
    virtual void draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds) = 0;

private:
    Rect bounds() const { return {0, 0, width(), height()}; }
    // The view's visible part, in item units.
    void drawView(Canvas& canvas);

    QPointer<TunerScreen> tuner_;
    TriangleCanvas triangles_; // the geometry node's, reused from frame to frame
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
