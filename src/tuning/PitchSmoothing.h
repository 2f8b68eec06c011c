#pragma once

#include <cstdint>
#include <deque>
#include <optional>

namespace veltra {

// Smooths the stream of note numbers before the graph sees it: a majority
// vote over the rounded values of the last five accepted readings. A reading
// that disagrees with the majority (an octave glitch, a stray harmonic) is
// replaced on the graph by the most recent reading of the majority note,
// with that reading's own fraction.
class PitchSmoothing {
public:
    static constexpr std::size_t kQueueLength = 5;

    // Queues note number x (k is x rounded half away from zero) and returns
    // the value the graph receives for this reading.
    std::optional<float> add(float x, std::int64_t k);

    const std::deque<float>& noteNumbersQueue() const { return noteNumbersQueue_; }
    const std::deque<std::int64_t>& noteNumbersIntPartQueue() const { return noteNumbersIntPartQueue_; }

private:
    std::int64_t majority() const;

    std::deque<float> noteNumbersQueue_;
    std::deque<std::int64_t> noteNumbersIntPartQueue_;
};

} // namespace veltra
