#pragma once

#include "OfflineSoundGate.h"
#include "report/PracticeTrack.h"

#include "app/OfflineTuner.h"
#include "dsp/PdListener.h"

#include <optional>

namespace veltra::cli {

// Hands every reading of the patch, with what the screen made of it, to a
// readout follower. It joins the tuner's dispatcher after the screen, so it
// hears each reading once the labels show the reading's outcome.
class ReadingTap : public PdListener {
public:
    ReadingTap(OfflineTuner& tuner, const std::optional<OfflineSoundGate>& gate, report::ReadoutFollower& follower);

    void receiveFloat(float frequency, const std::string& source) override;

private:
    OfflineTuner& tuner_;
    const std::optional<OfflineSoundGate>& gate_;
    report::ReadoutFollower& follower_;
};

} // namespace veltra::cli
