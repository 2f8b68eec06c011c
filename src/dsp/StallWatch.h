#pragma once

#include <chrono>
#include <cstdint>

namespace veltra {

// How long a running input may deliver nothing before it counts as lost:
// some hundred buffer periods of any device, and short enough that a stall
// and its reopening stay well inside the two seconds in which the next note
// is to be read.
inline constexpr double kInputStallTimeout = 1.0;

// The input watchdog's arithmetic: fed a count of buffers delivered and the
// time, says when the count has stood still for `timeout` seconds. The
// count is compared rather than the time of the last buffer, so a caller
// that was itself held up finds the buffers that came meanwhile and does
// not mistake its own delay for a stall.
class StallWatch {
public:
    explicit StallWatch(double timeout = kInputStallTimeout)
        : timeout_(timeout)
    {
    }

    // Seconds on the steady clock, the watchdogs' default time.
    static double now()
    {
        using namespace std::chrono;
        return duration<double>(steady_clock::now().time_since_epoch()).count();
    }

    // Starts the wait afresh (a stream was just opened).
    void restart(std::uint64_t count, double now)
    {
        count_ = count;
        since_ = now;
    }

    // True when the count moved since the last call or restart.
    bool advanced(std::uint64_t count, double now)
    {
        if (count == count_)
            return false;
        restart(count, now);
        return true;
    }

    bool stalled(std::uint64_t count, double now) { return !advanced(count, now) && now - since_ >= timeout_; }

private:
    double timeout_;
    std::uint64_t count_ = 0;
    double since_ = 0;
};

} // namespace veltra
