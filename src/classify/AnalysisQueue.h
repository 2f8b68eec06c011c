#pragma once

#include "classify/SpscRing.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <semaphore>
#include <span>
#include <thread>
#include <vector>

namespace veltra {

// The serial queue between the audio thread and the classifier. The audio
// thread copies samples into a preallocated lock-free ring and signals; one
// worker thread takes them out in fixed-size buffers, in arrival order, and
// hands each to the handler.
class AnalysisQueue {
public:
    using Handler = std::function<void(std::span<const float> buffer)>;

    // capacitySamples bounds how far the worker may fall behind before the
    // audio thread starts dropping samples.
    AnalysisQueue(std::size_t bufferFrames, std::size_t capacitySamples, Handler handler);
    ~AnalysisQueue();

    AnalysisQueue(const AnalysisQueue&) = delete;
    AnalysisQueue& operator=(const AnalysisQueue&) = delete;

    // Audio thread: never allocates, never blocks.
    void push(std::span<const float> samples);

    std::size_t droppedSamples() const { return ring_.dropped(); }

private:
    void run();

    SpscRing<float> ring_;
    std::vector<float> buffer_;
    Handler handler_;
    std::size_t pending_ = 0; // samples pushed since the last signal; audio thread only
    std::counting_semaphore<> ready_{0};
    std::atomic<bool> stopping_{false};
    std::thread worker_;
};

} // namespace veltra
