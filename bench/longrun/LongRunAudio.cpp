// long_run_audio FILE MINUTES: writes MINUTES of what a tuner hears over a
// long session, as 48 kHz mono float WAV, a block at a time so that even an
// hour takes no memory: in every 10 seconds, 4 s of a sawtooth (harmonic-rich
// like a real instrument) on a note that moves through the guitar's and
// voice's range, 3 s of white noise, 3 s of silence, and one NaN sample, as a
// damaged recording may hold.
#include <sndfile.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr int kRate = 48000;
constexpr int kCycleSeconds = 10;
constexpr int kToneSeconds = 4;
constexpr int kNoiseSeconds = 3;
constexpr double kToneAmplitude = 0.3;
constexpr double kNoiseAmplitude = 0.1;
// The notes visited, as MIDI numbers: E2 upward by fifths and back, with a
// few cents of mistuning so the readout has something to show.
constexpr int kLowestNote = 40;
constexpr int kNoteSteps = 6;
constexpr int kNoteStep = 7;
constexpr double kMistuneCents = 12;

double frequencyOfCycle(long cycle)
{
    const long position = cycle % (2 * kNoteSteps);
    const long step = position < kNoteSteps ? position : 2 * kNoteSteps - 1 - position;
    const double cents = (cycle % 3 - 1) * kMistuneCents;
    return 440.0 * std::pow(2.0, (kLowestNote + kNoteStep * step - 69 + cents / 100) / 12.0);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3 || std::atof(argv[2]) <= 0) {
        std::fprintf(stderr, "usage: long_run_audio FILE MINUTES\n");
        return 2;
    }
    SF_INFO info{0, kRate, 1, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0, 0};
    SNDFILE* file = sf_open(argv[1], SFM_WRITE, &info);
    if (!file) {
        std::fprintf(stderr, "%s: %s\n", argv[1], sf_strerror(nullptr));
        return 1;
    }
    const long total = std::lround(std::atof(argv[2]) * 60 * kRate);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> noise(-kNoiseAmplitude, kNoiseAmplitude);
    std::vector<float> block(kRate);
    double phase = 0;
    for (long start = 0; start < total; start += kRate) {
        const long cycle = start / (kCycleSeconds * kRate);
        const long second = (start / kRate) % kCycleSeconds;
        const double step = frequencyOfCycle(cycle) / kRate;
        for (std::size_t i = 0; i < block.size(); ++i) {
            if (second < kToneSeconds) {
                phase = std::fmod(phase + step, 1.0);
                block[i] = static_cast<float>(kToneAmplitude * (2 * phase - 1));
            } else {
                block[i] = second < kToneSeconds + kNoiseSeconds ? static_cast<float>(noise(random)) : 0.0f;
            }
        }
        if (second == kCycleSeconds - 1)
            block[0] = std::numeric_limits<float>::quiet_NaN();
        const sf_count_t n = std::min<sf_count_t>(kRate, total - start);
        if (sf_writef_float(file, block.data(), n) != n) {
            std::fprintf(stderr, "%s: %s\n", argv[1], sf_strerror(file));
            return 1;
        }
    }
    return sf_close(file) == 0 ? 0 : 1;
}
