#include "tone/ToneGenerator.h"

#include "settings/Fatal.h"
#include "settings/Preferences.h"
#include "tuning/Tuning.h"

#include <cmath>

namespace veltra {

namespace {

// Tag 1 (C) plus 59 is MIDI 60, middle C.
constexpr std::int64_t kTagToMidiOffset = 59;
constexpr std::int64_t kSemitonesPerOctave = 12;
constexpr std::int64_t kCancelCounterWrap = 10000;

// The patch is tuned to A = 440 Hz.
constexpr float kPatchReferenceHz = 440.0f;
// Note number of the reference A on the piano-key scale; it cancels out of
// the result but fixes where the single-precision rounding happens.
constexpr float kReferenceANoteNumber = 49.0f;

} // namespace

ToneGenerator::ToneGenerator(PdSender& sender, const PreferenceStore& store)
    : sender_(sender)
    , store_(store)
{
}

std::int64_t ToneGenerator::toneNoteNumber(std::int64_t tag, std::int64_t selectedSegmentIndex)
{
    std::int64_t base = 0;
    std::int64_t octaves = 0;
    std::int64_t note = 0;
    if (__builtin_add_overflow(tag, kTagToMidiOffset, &base) ||
        __builtin_mul_overflow(kSemitonesPerOctave, selectedSegmentIndex, &octaves) ||
        __builtin_add_overflow(base, octaves, &note))
        fatalError("tone note number overflows");
    return note;
}

// The buttons are the written notes: the tone is the concert pitch that
// sounds the written note, in the chosen tuning system.
void ToneGenerator::btnToneDown(std::int64_t tag, std::int64_t selectedSegmentIndex)
{
    const auto written = static_cast<float>(toneNoteNumber(tag, selectedSegmentIndex));
    playTone(Tuning::fromPreferences(store_).concertMidiNote(written));
}

void ToneGenerator::btnToneCancel()
{
    stopTone();
}

// The value sent is n + 12 * log2(A4 / 440) in exact arithmetic; it is
// computed through the note number's frequency ratio, step by step in single
// precision, and that rounding is part of the tone's pitch.
void ToneGenerator::playTone(float note)
{
    const float a4 = static_cast<float>(store_.integerForKey(PreferenceKey::A4));
    const float ratio = std::exp2((note - kReferenceANoteNumber) / 12.0f);
    const float tuned = ratio * a4 / kPatchReferenceHz;
    const float tunedNote = std::log2(tuned) * 12.0f + kReferenceANoteNumber;
    const float shift = tunedNote - note;
    sender_.sendFloat(shift + note, kMidiNoteReceiver);
    sender_.sendBang(kTriggerReceiver);
}

void ToneGenerator::stopTone()
{
    sender_.sendBang(kStopReceiver);
    // The counter stays below the wrap, so the increment cannot overflow.
    const std::int64_t next = toneCancelIncrement_ + 1;
    toneCancelIncrement_ = next < kCancelCounterWrap ? next : 0;
}

} // namespace veltra
