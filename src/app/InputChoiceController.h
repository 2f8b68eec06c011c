#pragma once

#include "dsp/AudioBackend.h"
#include "settings/Localization.h"
#include "settings/PreferenceStore.h"

#include <functional>
#include <string>
#include <vector>

namespace veltra {

// The settings' choice of sound input: "System default" first, then every
// input the sound system offers by its description, the choice kept by the
// input's lasting name (InputSource). A chosen input that is not there now
// stays listed, marked, so the choice can be seen and changed; the tuner
// listens to the default until it returns. The stream follows a new choice
// by itself (AppDelegate reads the key at every check).
class InputChoiceController {
public:
    // The sound system's devices as they are now.
    using DeviceList = std::function<std::vector<AudioDevice>()>;

    InputChoiceController(PreferenceStore& preferences, DeviceList devices);

    // Asks the sound system for its inputs again.
    void load();
    // The rows' titles in the user's language, and which one is chosen.
    const std::vector<std::string>& rows() const { return titles_; }
    int selectedRow() const;
    void select(int row);

    static constexpr const char* kContext = "Input";
    static constexpr const char* kFooter = VELTRA_TEXT(
        "Input", "The sound input the tuner listens to. While the chosen input is not connected, the tuner "
                 "listens to the system default, and returns to the chosen one when it is back.");

private:
    PreferenceStore& preferences_;
    DeviceList devices_;
    std::vector<std::string> identifiers_; // one a row; empty for the default
    std::vector<std::string> titles_;
};

} // namespace veltra
