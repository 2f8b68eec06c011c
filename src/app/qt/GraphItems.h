#pragma once

#include "app/qt/TunerScreen.h"

#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace veltra {

class Canvas;

// An item that paints one of the screen's views through QPainter and
// repaints when the view asks for it.
class CanvasItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(veltra::TunerScreen* tuner READ tuner WRITE setTuner NOTIFY tunerChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;
    TunerScreen* tuner() const { return tuner_; }
    void setTuner(TunerScreen* tuner);
    void paint(QPainter* painter) override;

signals:
    void tunerChanged();

protected:
    virtual void connectRedraw(TunerScreen& tuner) = 0;
    virtual void draw(TunerScreen& tuner, Canvas& canvas, const Rect& bounds) = 0;

private:
    QPointer<TunerScreen> tuner_;
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
