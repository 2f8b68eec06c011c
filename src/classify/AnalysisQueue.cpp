#include "classify/AnalysisQueue.h"

namespace veltra {

AnalysisQueue::AnalysisQueue(std::size_t bufferFrames, std::size_t capacitySamples, Handler handler)
    : ring_(capacitySamples), buffer_(bufferFrames), handler_(std::move(handler)), worker_([this] { run(); })
{
}

AnalysisQueue::~AnalysisQueue()
{
    stopping_.store(true, std::memory_order_release);
    ready_.release();
    worker_.join();
}

void AnalysisQueue::push(std::span<const float> samples)
{
    ring_.write(samples);
    pending_ += samples.size();
    // One wake-up per completed buffer: the worker drains everything that is
    // there when it runs, so extra signals only cost an empty pass.
    if (pending_ >= buffer_.size()) {
        pending_ = 0;
        ready_.release();
    }
}

void AnalysisQueue::run()
{
    for (;;) {
        ready_.acquire();
        while (ring_.readExactly(buffer_))
            handler_(buffer_);
        if (stopping_.load(std::memory_order_acquire))
            return;
    }
}

} // namespace veltra
