#pragma once

#include "dsp/OfflinePatch.h"
#include "dsp/PdBase.h"
#include "dsp/PdDispatcher.h"

#include <sstream>
#include <string>
#include <vector>

namespace veltra::test {

// The real patch in the real libpd, driven offline: what a test feeds in,
// the patch hears; every float sent to "frequency" is recorded with the
// audio time at which it arrived.
class PatchRig : public PdListener {
public:
    struct Reading {
        double time;
        float frequency;
    };

    explicit PatchRig(int sampleRate = 48000)
        : dispatcher(base, diagnostics)
        , patch(base, sampleRate)
    {
        base.setDelegate(&dispatcher);
        dispatcher.addListener(this, "frequency");
    }

    void receiveFloat(float value, const std::string&) override
    {
        readings.push_back({patch.driver().time(), value});
    }

    // Feeds audio; returns the patch's interleaved stereo output.
    std::vector<float> feed(const std::vector<float>& input)
    {
        std::vector<float> out;
        patch.driver().run(input, &out);
        return out;
    }

    std::ostringstream diagnostics;
    PdBase base;
    PdDispatcher dispatcher;
    OfflinePatch patch;
    std::vector<Reading> readings;
};

} // namespace veltra::test
