#include "app/qt/GraphItems.h"

#include "app/qt/QPainterCanvas.h"

#include <QPainter>

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

void CanvasItem::paint(QPainter* painter)
{
    if (!tuner_)
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    QPainterCanvas canvas(*painter);
    draw(*tuner_, canvas, {0, 0, width(), height()});
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
