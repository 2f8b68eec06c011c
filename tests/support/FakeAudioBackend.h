#pragma once

#include "dsp/AudioBackend.h"

#include <deque>
#include <string>
#include <vector>

namespace veltra::test {

// A scripted sound system: each open() takes the next scripted answer (a
// granted shape, or an error) and every call is logged, so tests can check
// the order of what the program asked for.
class FakeAudioBackend : public AudioBackend {
public:
    using Answer = std::variant<AudioStreamConfig, std::string>;

    bool reachable() override { return answering; }
    std::vector<AudioDevice> devices() override { return deviceList; }

    Answer open(const AudioStreamConfig& wanted, AudioProcessor& p) override
    {
        log.push_back("open " + std::to_string(wanted.sampleRate));
        requests.push_back(wanted);
        Answer answer = wanted; // grant what was asked unless scripted otherwise
        if (!answers.empty()) {
            answer = answers.front();
            answers.pop_front();
        }
        processor = std::holds_alternative<AudioStreamConfig>(answer) ? &p : nullptr;
        lost = lost && !processor; // a new stream has not failed
        return answer;
    }
    bool start() override
    {
        log.push_back("start");
        running = processor != nullptr;
        return running;
    }
    void stop() override
    {
        log.push_back("stop");
        running = false;
    }
    void close() override
    {
        running = false;
        processor = nullptr;
    }
    bool isRunning() const override { return running; }
    bool deviceLost() const override { return lost; }
    void chooseInput(const std::string& identifier) override { chosenInput = identifier; }
    bool inputFallback() const override { return fallback; }

    // The shape a stream is granted with when the device adapts.
    static AudioStreamConfig adapted(const AudioStreamConfig& c, int rate)
    {
        AudioStreamConfig out = c;
        out.sampleRate = rate;
        return out;
    }

    std::vector<AudioDevice> deviceList{{0, "test microphone and speaker", 1, 2, true, true, {44100, 48000}, {}}};
    std::deque<Answer> answers;
    std::vector<std::string> log;
    std::vector<AudioStreamConfig> requests;
    AudioProcessor* processor = nullptr;
    bool running = false;
    bool lost = false;
    bool answering = true;
    std::string chosenInput; // what the next open() records from
    bool fallback = false;   // the chosen input is away, the default stands in
};

} // namespace veltra::test
