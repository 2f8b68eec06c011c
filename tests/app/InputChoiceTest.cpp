#include "app/InputChoiceController.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltra {
namespace {

using ::testing::ElementsAre;

TEST(InputChoice, TheDefaultFirstThenTheServersInputsAndAMissingChoiceStaysListed)
{
    MemoryPreferenceStore preferences;
    std::vector<AudioDevice> devices{
        {0, "Built-in Audio Analog Stereo", 2, 0, true, false, {48000}, "alsa_input.pci.analog-stereo"},
        {1, "Built-in Audio Analog Stereo", 0, 2, false, true, {48000}, "alsa_output.pci.analog-stereo"},
        {2, "Scarlett 2i2 USB", 2, 0, false, false, {48000}, "alsa_input.usb-Focusrite"},
        {3, "hw:0", 2, 0, false, false, {48000}, ""}, // a direct device: no lasting name
    };
    InputChoiceController inputs(preferences, [&devices] { return devices; });
    inputs.load();
    EXPECT_THAT(inputs.rows(), ElementsAre("System default", "Built-in Audio Analog Stereo", "Scarlett 2i2 USB"));
    EXPECT_EQ(inputs.selectedRow(), 0);
    EXPECT_FALSE(preferences.hasValue(PreferenceKey::InputSource)); // nothing written by looking

    inputs.select(2);
    EXPECT_EQ(preferences.stringForKey(PreferenceKey::InputSource), "alsa_input.usb-Focusrite");
    EXPECT_EQ(inputs.selectedRow(), 2);

    devices.erase(devices.begin() + 2); // unplugged
    inputs.load();
    EXPECT_THAT(inputs.rows(), ElementsAre("System default", "Built-in Audio Analog Stereo",
                                           "alsa_input.usb-Focusrite (not connected)"));
    EXPECT_EQ(inputs.selectedRow(), 2);

    inputs.select(0);
    EXPECT_EQ(preferences.stringForKey(PreferenceKey::InputSource), "");
    inputs.select(7); // no such row
    inputs.select(-1);
    EXPECT_EQ(inputs.selectedRow(), 0);
}

} // namespace
} // namespace veltra
