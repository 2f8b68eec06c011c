#include "tuning/PitchSmoothing.h"

#include <algorithm>

namespace veltra {

std::optional<float> PitchSmoothing::add(float x, std::int64_t k)
{
    noteNumbersQueue_.push_back(x);
    noteNumbersIntPartQueue_.push_back(k);
    if (noteNumbersQueue_.size() > kQueueLength) {
        noteNumbersQueue_.pop_front();
        noteNumbersIntPartQueue_.pop_front();
    }

    const std::int64_t m = majority();
    if (m == k)
        return x;
    const auto& ints = noteNumbersIntPartQueue_;
    const auto last = std::find(ints.rbegin(), ints.rend(), m);
    if (last == ints.rend())
        return std::nullopt;
    return noteNumbersQueue_[static_cast<std::size_t>(std::distance(last, ints.rend()) - 1)];
}

// The most frequent rounded note. Among equally frequent notes the one heard
// most recently wins, so a tie follows the player rather than the past.
std::int64_t PitchSmoothing::majority() const
{
    const auto& ints = noteNumbersIntPartQueue_;
    std::int64_t best = ints.back();
    long bestCount = 0;
    for (auto it = ints.rbegin(); it != ints.rend(); ++it) {
        const long count = std::count(ints.begin(), ints.end(), *it);
        if (count > bestCount) {
            best = *it;
            bestCount = count;
        }
    }
    return best;
}

} // namespace veltra
