#pragma once

#include <deque>
#include <functional>

namespace veltra::test {

// The main loop of a test: posted tasks wait until the test runs them.
class ManualMainQueue {
public:
    void post(std::function<void()> task) { tasks_.push_back(std::move(task)); }

    void runAll()
    {
        while (!tasks_.empty()) {
            auto task = std::move(tasks_.front());
            tasks_.pop_front();
            task();
        }
    }

    std::size_t size() const { return tasks_.size(); }

private:
    std::deque<std::function<void()>> tasks_;
};

} // namespace veltra::test
