#include "app/qt/QtRepeatingTimer.h"

#include <cmath>

namespace veltra {

void QtRepeatingTimer::start(double intervalSeconds, std::function<void()> action)
{
    timer_.disconnect();
    QObject::connect(&timer_, &QTimer::timeout, std::move(action));
    timer_.start(static_cast<int>(std::lround(intervalSeconds * 1000)));
}

void QtRepeatingTimer::invalidate()
{
    timer_.stop();
    timer_.disconnect();
}

} // namespace veltra
