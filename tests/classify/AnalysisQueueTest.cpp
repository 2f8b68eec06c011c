#include "classify/AnalysisQueue.h"
#include "classify/SpscRing.h"

#include <gtest/gtest.h>

#include <numeric>
#include <thread>

namespace veltra {
namespace {

TEST(SpscRingTest, WrapsAroundAndDropsWhatDoesNotFit)
{
    SpscRing<int> ring(6);
    ASSERT_EQ(ring.capacity(), 8u);
    std::vector<int> out(3);
    int next = 0;
    for (int round = 0; round < 10; ++round) {
        const std::vector<int> in{next, next + 1, next + 2};
        ASSERT_EQ(ring.write(in), 3u);
        ASSERT_TRUE(ring.readExactly(out));
        EXPECT_EQ(out, in);
        next += 3;
    }
    EXPECT_FALSE(ring.readExactly(out)) << "nothing is read from an empty ring";
    const std::vector<int> tooMany(10, 7);
    EXPECT_EQ(ring.write(tooMany), 8u);
    EXPECT_EQ(ring.dropped(), 2u);
}

TEST(AnalysisQueueTest, DeliversEveryFullBufferInOrderFromAnotherThread)
{
    constexpr std::size_t kFrames = 64;
    std::vector<float> received;
    std::size_t calls = 0;
    {
        AnalysisQueue queue(kFrames, 1 << 16, [&](std::span<const float> buffer) {
            EXPECT_EQ(buffer.size(), kFrames);
            received.insert(received.end(), buffer.begin(), buffer.end());
            ++calls;
        });
        std::thread producer([&] {
            std::vector<float> chunk(37);
            for (int i = 0; i < 100; ++i) {
                std::iota(chunk.begin(), chunk.end(), float(i * 37));
                queue.push(chunk);
            }
        });
        producer.join();
        EXPECT_EQ(queue.droppedSamples(), 0u);
    }
    EXPECT_EQ(calls, 3700 / kFrames);
    for (std::size_t i = 0; i < received.size(); ++i)
        ASSERT_EQ(received[i], float(i));
}

} // namespace
} // namespace veltra
