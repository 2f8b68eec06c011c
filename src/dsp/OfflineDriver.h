#pragma once

#include <span>
#include <vector>

namespace veltra {

class PdBase;

// Runs the open patch over audio held in memory, as fast as the machine
// allows, instead of a sound card: tests and the command-line tool use it.
//
// Audio goes through one 64-frame block at a time, and after every block the
// patch's messages are delivered, so a listener that asks time() sees the
// audio time at the end of the block in which the message was sent.
class OfflineDriver {
public:
    OfflineDriver(PdBase& base, int sampleRate);

    // Processes mono input (a partial last block is padded with silence);
    // appends the patch's interleaved stereo output when output is given.
    void run(std::span<const float> input, std::vector<float>* output = nullptr);

    // Seconds of audio processed so far.
    double time() const { return static_cast<double>(frames_) / sampleRate_; }

private:
    PdBase& base_;
    int sampleRate_;
    long long frames_ = 0;
};

} // namespace veltra
