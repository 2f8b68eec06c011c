#pragma once

#include <cmath>
#include <numbers>
#include <vector>

namespace veltra::test {

// A sine of the given peak amplitude.
inline std::vector<float> sine(double frequency, double amplitude, double seconds, int sampleRate)
{
    std::vector<float> out(static_cast<std::size_t>(seconds * sampleRate));
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = static_cast<float>(amplitude * std::sin(2 * std::numbers::pi * frequency * static_cast<double>(i) / sampleRate));
    return out;
}

// A sawtooth of the given peak amplitude: every harmonic, falling as 1/n,
// like a bowed or plucked string, and several times dearer to track than a
// sine.
inline std::vector<float> sawtooth(double frequency, double amplitude, double seconds, int sampleRate)
{
    std::vector<float> out(static_cast<std::size_t>(seconds * sampleRate));
    for (std::size_t i = 0; i < out.size(); ++i) {
        const double phase = frequency * static_cast<double>(i) / sampleRate;
        out[i] = static_cast<float>(amplitude * (2.0 * (phase - std::floor(phase)) - 1.0));
    }
    return out;
}

inline std::vector<float> silence(double seconds, int sampleRate)
{
    return std::vector<float>(static_cast<std::size_t>(seconds * sampleRate), 0.0f);
}

inline std::vector<float> concat(std::vector<float> a, const std::vector<float>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// Peak amplitude of a sine whose level Pd's env~ reports as db (100 dB is
// an RMS of 1).
inline double amplitudeForPdDb(double db)
{
    return std::sqrt(2.0) * std::pow(10.0, (db - 100.0) / 20.0);
}

inline double cents(double frequency, double reference)
{
    return 1200.0 * std::log2(frequency / reference);
}

} // namespace veltra::test
