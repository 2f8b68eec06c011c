#include "app/InputChoiceController.h"

#include "settings/Preferences.h"

#include <algorithm>

namespace veltra {

InputChoiceController::InputChoiceController(PreferenceStore& preferences, DeviceList devices)
    : preferences_(preferences)
    , devices_(std::move(devices))
{
}

void InputChoiceController::load()
{
    identifiers_ = {""};
    titles_ = {translate("Input", "System default")};
    for (const AudioDevice& device : devices_()) {
        // Only inputs the sound server names can be chosen: the direct way
        // to the sound card (RtAudio) has no lasting names.
        if (device.inputChannels == 0 || device.identifier.empty())
            continue;
        identifiers_.push_back(device.identifier);
        titles_.push_back(device.name);
    }
    if (const std::string chosen = preferences_.stringForKey(PreferenceKey::InputSource);
        !chosen.empty() && std::ranges::find(identifiers_, chosen) == identifiers_.end()) {
        identifiers_.push_back(chosen);
        //: %1 the chosen input's name on the sound server, which is not there now.
        titles_.push_back(fillIn(translate("Input", "%1 (not connected)"), {chosen}));
    }
}

int InputChoiceController::selectedRow() const
{
    const auto row = std::ranges::find(identifiers_, preferences_.stringForKey(PreferenceKey::InputSource));
    return row == identifiers_.end() ? 0 : static_cast<int>(row - identifiers_.begin());
}

void InputChoiceController::select(int row)
{
    if (row < 0 || static_cast<std::size_t>(row) >= identifiers_.size() || row == selectedRow())
        return;
    preferences_.setString(identifiers_[static_cast<std::size_t>(row)], PreferenceKey::InputSource);
}

} // namespace veltra
