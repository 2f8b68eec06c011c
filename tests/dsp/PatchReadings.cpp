// Every frequency the patch reports, written exactly (C99 hexadecimal
// floats), for a fixed set of generated inputs and the recordings named on
// the command line. The program is built twice, against our libpd and
// against the same Pure Data source without our patches (libpd_stock), and
// same-readings-as-stock-pd.sh compares the two outputs byte for byte.
//
//   patch_readings [FILE...]        the generated inputs, then each FILE
//   patch_readings --held SECONDS   only a held G3 sawtooth (bench/)
#include "dsp/AudioFile.h"
#include "dsp/OfflinePatch.h"
#include "dsp/PdBase.h"
#include "dsp/PdDispatcher.h"
#include "support/Signals.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <numbers>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using veltra::test::sawtooth;
using veltra::test::sine;

struct Input {
    std::string name;
    int sampleRate;
    std::vector<float> samples;
};

// A square wave: odd harmonics only, with a steep edge.
std::vector<float> square(double frequency, double amplitude, double seconds, int sampleRate)
{
    std::vector<float> out = sine(frequency, 1.0, seconds, sampleRate);
    for (float& x : out)
        x = static_cast<float>(x >= 0 ? amplitude : -amplitude);
    return out;
}

std::vector<float> whiteNoise(double amplitude, double seconds, int sampleRate)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uniform(static_cast<float>(-amplitude), static_cast<float>(amplitude));
    std::vector<float> out(static_cast<std::size_t>(seconds * sampleRate));
    for (float& x : out)
        x = uniform(random);
    return out;
}

// A sine gliding exponentially from one frequency to another.
std::vector<float> glide(double from, double to, double amplitude, double seconds, int sampleRate)
{
    std::vector<float> out(static_cast<std::size_t>(seconds * sampleRate));
    const double rate = std::log(to / from) / seconds;
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double t = static_cast<double>(i) / sampleRate;
        out[i] = static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * from * (std::exp(rate * t) - 1) / rate));
    }
    return out;
}

std::vector<float> mix(std::vector<float> a, const std::vector<float>& b)
{
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
        a[i] += b[i];
    return a;
}

// The tuner's range and past it at both ends, as sines (one peak) and as
// sawtooths and squares (up to twenty peaks per frame), at the two common
// rates; noise and glides, whose peaks move from frame to frame; quiet
// input near the level gate; and tones within 50 bins of the top of the
// spectrum, where a peak's mask reaches past the mask buffer.
std::vector<Input> generatedInputs()
{
    std::vector<Input> inputs;
    const auto add = [&](std::string name, int rate, std::vector<float> samples) {
        inputs.push_back({std::move(name) + "@" + std::to_string(rate), rate, std::move(samples)});
    };
    for (const int rate : {48000, 44100})
        for (const double f : {27.5, 41.2, 65.4, 98.0, 146.8, 220.0, 329.6, 493.9, 740.0, 1108.7, 1661.2, 2489.0, 3729.3, 4186.0}) {
            add("sine " + std::to_string(f), rate, sine(f, 0.3, 1.0, rate));
            add("sawtooth " + std::to_string(f), rate, sawtooth(f, 0.25, 1.0, rate));
        }
    for (const double f : {55.0, 196.0, 880.0})
        add("square " + std::to_string(f), 48000, square(f, 0.2, 1.0, 48000));
    add("white noise", 48000, whiteNoise(0.3, 2.0, 48000));
    add("glide 40-8000 Hz", 48000, glide(40, 8000, 0.3, 3.0, 48000));
    add("sawtooth glide", 44100, mix(glide(30, 3000, 0.2, 3.0, 44100), glide(61, 6100, 0.1, 3.0, 44100)));
    add("quiet sawtooth in noise", 48000, mix(sawtooth(196.0, 0.003, 2.0, 48000), whiteNoise(0.0003, 2.0, 48000)));
    add("tone near the top with A4", 48000, mix(sine(23900.0, 0.5, 2.0, 48000), sine(440.0, 0.3, 2.0, 48000)));
    add("tone near the top", 44100, sine(21950.0, 0.5, 2.0, 44100));
    return inputs;
}

// Runs the patch over the input and writes one line per reading:
// "<input> <seconds> <hertz as a hexadecimal float>".
void writeReadings(const Input& input)
{
    class Printer : public veltra::PdListener {
    public:
        Printer(const Input& input, veltra::OfflinePatch& patch) : input_(input), patch_(patch) {}
        void receiveFloat(float value, const std::string&) override
        {
            std::printf("%s %.6f %a\n", input_.name.c_str(), patch_.driver().time(), static_cast<double>(value));
        }

    private:
        const Input& input_;
        veltra::OfflinePatch& patch_;
    };
    std::ostringstream diagnostics;
    veltra::PdBase base;
    veltra::PdDispatcher dispatcher(base, diagnostics);
    veltra::OfflinePatch patch(base, input.sampleRate);
    Printer printer(input, patch);
    base.setDelegate(&dispatcher);
    dispatcher.addListener(&printer, "frequency");
    patch.driver().run(input.samples);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const std::vector<std::string> args(argv + 1, argv + argc);
        if (args.size() == 2 && args[0] == "--held") {
            writeReadings({"held G3", 48000, sawtooth(196.0, 0.25, std::stod(args[1]), 48000)});
            return 0;
        }
        for (const Input& input : generatedInputs())
            writeReadings(input);
        for (const std::string& path : args) {
            veltra::AudioData audio = veltra::readAudioFile(path);
            writeReadings({path, static_cast<int>(audio.sampleRate), std::move(audio.samples)});
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "patch_readings: %s\n", e.what());
        return 2;
    }
    return 0;
}
