#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <optional>

namespace veltra {

// A fixed-capacity single-producer single-consumer queue: one thread pushes,
// one thread pops, neither ever waits or allocates. Used to hand data across
// the audio thread boundary.
template <typename T, std::size_t Capacity>
class SpscQueue {
    static_assert(Capacity >= 2 && (Capacity & (Capacity - 1)) == 0, "capacity must be a power of two");

public:
    // Returns false (and drops the item) when the queue is full.
    bool push(const T& item)
    {
        const std::size_t head = head_.load(std::memory_order_relaxed);
        if (head - tail_.load(std::memory_order_acquire) == Capacity)
            return false;
        slots_[head & (Capacity - 1)] = item;
        head_.store(head + 1, std::memory_order_release);
        return true;
    }

    std::optional<T> pop()
    {
        const std::size_t tail = tail_.load(std::memory_order_relaxed);
        if (tail == head_.load(std::memory_order_acquire))
            return std::nullopt;
        T item = slots_[tail & (Capacity - 1)];
        tail_.store(tail + 1, std::memory_order_release);
        return item;
    }

private:
    std::array<T, Capacity> slots_{};
    alignas(64) std::atomic<std::size_t> head_{0};
    alignas(64) std::atomic<std::size_t> tail_{0};
};

} // namespace veltra
