#pragma once

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <span>
#include <vector>

namespace veltra {

// A lock-free single-producer single-consumer ring of samples. All storage is
// allocated up front, so the producer (an audio callback) neither allocates
// nor waits: what does not fit is dropped and counted.
template <typename T>
class SpscRing {
public:
    // capacity is rounded up to a power of two so indices wrap with a mask.
    explicit SpscRing(std::size_t capacity)
        : buffer_(std::bit_ceil(capacity)), mask_(buffer_.size() - 1)
    {
    }

    // Producer side. Returns how many items were written.
    std::size_t write(std::span<const T> items)
    {
        const std::size_t head = head_.load(std::memory_order_relaxed);
        const std::size_t tail = tail_.load(std::memory_order_acquire);
        const std::size_t count = std::min(items.size(), buffer_.size() - (head - tail));
        for (std::size_t i = 0; i < count; ++i)
            buffer_[(head + i) & mask_] = items[i];
        head_.store(head + count, std::memory_order_release);
        dropped_.fetch_add(items.size() - count, std::memory_order_relaxed);
        return count;
    }

    // Consumer side: fills `out` completely, or takes nothing and returns false.
    bool readExactly(std::span<T> out)
    {
        const std::size_t tail = tail_.load(std::memory_order_relaxed);
        const std::size_t head = head_.load(std::memory_order_acquire);
        if (head - tail < out.size())
            return false;
        for (std::size_t i = 0; i < out.size(); ++i)
            out[i] = buffer_[(tail + i) & mask_];
        tail_.store(tail + out.size(), std::memory_order_release);
        return true;
    }

    std::size_t capacity() const { return buffer_.size(); }
    std::size_t dropped() const { return dropped_.load(std::memory_order_relaxed); }

private:
    std::vector<T> buffer_;
    const std::size_t mask_;
    std::atomic<std::size_t> head_{0};
    std::atomic<std::size_t> tail_{0};
    std::atomic<std::size_t> dropped_{0};
};

} // namespace veltra
