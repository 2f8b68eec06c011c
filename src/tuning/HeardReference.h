#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace veltra {

// Takes the reference A from a note that is heard, as an ensemble tunes to
// its oboe's or piano's A. Fed the patch's readings while it listens, it
// waits for a note held steady for about a second; when that note lies
// within half a semitone of an A in any octave of the current tuning, the
// new reference is its frequency moved into the octave of A4 and rounded
// to whole hertz, as the reference is kept.
class HeardReference {
public:
    enum class Outcome {
        Set,          // the reference is `a4`
        OutOfRange,   // the A heard would be `a4`, outside 400 to 499 Hz
        NotAnA,       // a steady note, but `cents` from the nearest A
        NothingHeard, // no steady note before the time ran out
    };
    struct Result {
        Outcome outcome;
        int a4 = 0;
        double cents = 0; // the steady note from the nearest A, in cents
        bool operator==(const Result&) const = default;
    };

    // A reading every 256 samples: 188 of them are a second at 48 kHz
    // (1.09 s at 44.1 kHz), long enough to tell a held note from a passing
    // one and short enough not to keep a player waiting.
    static constexpr std::size_t kSteadyReadings = 188;
    // A held note's readings stay within this many cents of each other; a
    // slide into the note, or vibrato wider than a string player's, does not.
    static constexpr double kSteadySpreadCents = 20.0;
    // How far from an A a note may lie and still be taken for one: the
    // nearest note of the current tuning is A.
    static constexpr double kLargestOffsetCents = 50.0;
    // Without a steady note for so many readings (about ten seconds), the
    // listening ends: nobody is playing an A.
    static constexpr std::size_t kGiveUpReadings = 1875;
    // Readings below the tuner's lowest note are no pitch.
    static constexpr float kLowestFrequency = 65.0f;

    // Starts listening, against the reference in use now.
    void start(int currentA4);
    void cancel() { listening_ = false; }
    bool listening() const { return listening_; }

    // One reading of the patch, in hertz (0: no pitch). The outcome once the
    // listening has ended with this reading, else nothing.
    std::optional<Result> addReading(float frequency);

private:
    Result decide() const;

    bool listening_ = false;
    int a4_ = 0;
    std::size_t readings_ = 0;
    std::vector<double> run_; // the latest steady candidates, in cents from A4
    std::size_t next_ = 0;    // where the next reading goes once the run is full
};

} // namespace veltra
