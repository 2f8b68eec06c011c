#include "Command.h"
#include "OutputFile.h"
#include "TunerOptions.h"

#include "dsp/AudioFile.h"
#include "dsp/OfflinePatch.h"
#include "tone/ToneGenerator.h"

#include <array>
#include <ostream>

namespace veltra::cli {

namespace {

// The note buttons' tags, 1 to 12 from C; flats name the same buttons.
std::int64_t noteTag(const std::string& name)
{
    static const std::array<std::pair<const char*, const char*>, 12> names{{
        {"C", "C"}, {"C#", "Db"}, {"D", "D"}, {"D#", "Eb"}, {"E", "E"}, {"F", "F"},
        {"F#", "Gb"}, {"G", "G"}, {"G#", "Ab"}, {"A", "A"}, {"A#", "Bb"}, {"B", "B"},
    }};
    for (std::size_t i = 0; i < names.size(); ++i)
        if (name == names[i].first || name == names[i].second)
            return static_cast<std::int64_t>(i) + 1;
    throw UsageError("'" + name + "' is not a note name (C, C#, Db, D, ... B)");
}

// The octave selector's segments start at the octave of middle C.
constexpr int kFirstOctave = 4;
constexpr int kLastOctave = 7;
constexpr int kSampleRate = 48000;
// After the release the tone needs 100 ms to fade; a little more is kept.
constexpr double kReleaseSeconds = 0.15;

} // namespace

int runToneCommand(const Args& args, std::ostream& out, std::ostream&)
{
    ArgReader reader(args);
    const auto octave = reader.numberOption("--octave", kFirstOctave, kLastOctave).value_or(kFirstOctave);
    const double seconds = reader.numberOption("--seconds", 0.1, 600).value_or(2.0);
    const auto output = reader.option("-o");
    MemoryPreferenceStore preferences = tunerPreferences(reader);
    const Args notes = reader.positionals();
    if (notes.size() != 1)
        throw UsageError("tone takes one note name");
    if (!output)
        throw UsageError("tone needs an output file: -o OUT.wav");
    if (octave != static_cast<int>(octave))
        throw UsageError("--octave must be a whole number");
    const std::int64_t tag = noteTag(notes[0]);

    PdBase base;
    OfflinePatch patch(base, kSampleRate);
    ToneGenerator tone(base, preferences);
    std::vector<float> stereo;
    tone.btnToneDown(tag, static_cast<std::int64_t>(octave) - kFirstOctave);
    patch.driver().run(std::vector<float>(static_cast<std::size_t>(seconds * kSampleRate)), &stereo);
    tone.btnToneCancel();
    patch.driver().run(std::vector<float>(static_cast<std::size_t>(kReleaseSeconds * kSampleRate)), &stereo);
    writeOutputFile(*output, encodeWav(stereo, 2, kSampleRate), out);
    if (*output != "-")
        out << "wrote " << *output << '\n';
    return kExitOk;
}

} // namespace veltra::cli
