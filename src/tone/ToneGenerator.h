#pragma once

#include "dsp/PdSender.h"
#include "settings/PreferenceStore.h"

#include <cstdint>
#include <string_view>

namespace veltra {

// The reference-tone panel: twelve note buttons (tags 1 to 12, C to B) and an
// octave selector. Pressing a button sounds a sine tone in the user's tuning
// (reference A, tuning system, instrument key) through the patch; releasing it stops the tone. The tone's state lives in
// the patch, so every press and release is sent as it comes.
class ToneGenerator {
public:
    // Receivers of the patch.
    static constexpr std::string_view kMidiNoteReceiver = "midinote";
    static constexpr std::string_view kTriggerReceiver = "trigger";
    static constexpr std::string_view kStopReceiver = "stop";

    ToneGenerator(PdSender& sender, const PreferenceStore& store);

    // The MIDI note of button tag in the selected octave: tag 1 in segment 0
    // is middle C (60); each segment is one octave up. Overflow is fatal.
    static std::int64_t toneNoteNumber(std::int64_t tag, std::int64_t selectedSegmentIndex);

    void btnToneDown(std::int64_t tag, std::int64_t selectedSegmentIndex);
    void btnToneCancel();

    // Sends the MIDI note moved by the reference A's offset from 440 Hz, then
    // starts the tone.
    void playTone(float note);
    void stopTone();

    // Counts releases, wrapping to 0 at 10000.
    std::int64_t toneCancelIncrement() const { return toneCancelIncrement_; }

private:
    PdSender& sender_;
    const PreferenceStore& store_;
    std::int64_t toneCancelIncrement_ = 0;
};

} // namespace veltra
