#pragma once

#include "app/ViewController.h"

#include <QTimer>

namespace veltra {

// A repeating timer on Qt's main loop.
class QtRepeatingTimer : public RepeatingTimer {
public:
    void start(double intervalSeconds, std::function<void()> action) override;
    void invalidate() override;

private:
    QTimer timer_;
};

} // namespace veltra
