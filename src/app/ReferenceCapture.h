#pragma once

#include "dsp/PdListener.h"
#include "settings/PreferenceStore.h"
#include "tuning/HeardReference.h"

#include <functional>
#include <string>

namespace veltra {

// The reference picker's "listen for an A": while it listens, the patch's
// readings (it is a listener of `frequency` beside the main screen) go to a
// HeardReference; a steady A sets A4, and every outcome is told in one
// sentence in the user's language. It hears what the tuner hears, so it
// listens only while the tuner does.
class ReferenceCapture : public PdListener {
public:
    explicit ReferenceCapture(PreferenceStore& preferences);

    // Starts listening against the reference stored now; again while
    // listening, starts afresh.
    void start();
    void cancel();
    bool listening() const { return heard_.listening(); }
    // What to tell the user: empty before the first start.
    const std::string& message() const { return message_; }
    // Called on every change of listening() or message(), and after A4 is
    // stored, so the wheel can move to it.
    void setChanged(std::function<void()> changed) { changed_ = std::move(changed); }

    void receiveFloat(float value, const std::string& source) override;


private:
    void finish(const HeardReference::Result& result);

    PreferenceStore& preferences_;
    HeardReference heard_;
    std::string message_;
    std::function<void()> changed_;
};

} // namespace veltra
