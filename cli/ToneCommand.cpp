#include "Command.h"
#include "NoteName.h"
#include "OutputFile.h"
#include "TunerOptions.h"

#include "dsp/AudioFile.h"
#include "dsp/OfflinePatch.h"
#include "tone/ToneGenerator.h"

#include <ostream>

namespace veltra::cli {

namespace {

// The octave of a note named without one, as the app's octave selector
// starts: the octave of middle C.
constexpr int kDefaultOctave = 4;
// Tones cover the notes the readout can show. Its octave digits end at B8;
// at the bottom, readings under 65 Hz are dropped, which with the reference
// A at its highest (499 Hz) leaves Bb1 the lowest note named.
constexpr int kLowestMidiNote = 34; // Bb1
constexpr int kHighestMidiNote = 119; // B8
constexpr int kLowestOctave = 1;
constexpr int kHighestOctave = 8;
// The buttons play tag 1 (C) to 12 (B) in an octave segment counted from
// middle C (MIDI 60), so any MIDI note is a tag in some segment.
constexpr int kMiddleC = 60;
constexpr int kSemitonesPerOctave = 12;
constexpr int kSampleRate = 48000;
// After the release the tone needs 100 ms to fade; a little more is kept.
constexpr double kReleaseSeconds = 0.15;

} // namespace

int runToneCommand(const Args& args, std::ostream& out, std::ostream&)
{
    ArgReader reader(args);
    const auto octaveOption = reader.numberOption("--octave", kLowestOctave, kHighestOctave);
    const double seconds = reader.numberOption("--seconds", 0.1, 600).value_or(2.0);
    const auto output = reader.option("-o");
    MemoryPreferenceStore preferences = tunerPreferences(reader);
    const Args notes = reader.positionals();
    if (notes.size() != 1)
        throw UsageError("tone takes one note name");
    if (!output)
        throw UsageError("tone needs an output file: -o OUT.wav");
    if (octaveOption && *octaveOption != static_cast<int>(*octaveOption))
        throw UsageError("--octave must be a whole number");
    const NoteName name = parseNoteName(notes[0]);
    if (name.octave && octaveOption)
        throw UsageError("'" + notes[0] + "' names its octave already; leave out --octave");
    const int octave = name.octave.value_or(octaveOption ? static_cast<int>(*octaveOption) : kDefaultOctave);
    const int midi = name.midiNote(octave);
    if (midi < kLowestMidiNote || midi > kHighestMidiNote)
        throw UsageError("'" + notes[0] + (name.octave ? "" : std::to_string(octave)) +
                         "' is outside the tuner's range, Bb1 to B8");
    const int fromMiddleC = midi - kMiddleC;
    // Floor division: the notes below middle C lie in negative segments.
    const int segment = (fromMiddleC - (fromMiddleC < 0 ? kSemitonesPerOctave - 1 : 0)) / kSemitonesPerOctave;
    const int tag = fromMiddleC - segment * kSemitonesPerOctave + 1;

    PdBase base;
    OfflinePatch patch(base, kSampleRate);
    ToneGenerator tone(base, preferences);
    std::vector<float> stereo;
    tone.btnToneDown(tag, segment);
    patch.driver().run(std::vector<float>(static_cast<std::size_t>(seconds * kSampleRate)), &stereo);
    tone.btnToneCancel();
    patch.driver().run(std::vector<float>(static_cast<std::size_t>(kReleaseSeconds * kSampleRate)), &stereo);
    writeOutputFile(*output, encodeWav(stereo, 2, kSampleRate, WavSamples::Pcm16), out);
    if (*output != "-")
        out << "wrote " << *output << '\n';
    return kExitOk;
}

} // namespace veltra::cli
