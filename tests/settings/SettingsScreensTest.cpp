#include "settings/FrequencyTableViewController.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "settings/Preferences.h"
#include "settings/SettingsTableViewController.h"

#include <gtest/gtest.h>

#include <map>

namespace veltra {
namespace {

// A settings screen over a fresh store with the defaults in place, counting
// what it posts.
struct SettingsFixture : ::testing::Test {
    SettingsFixture()
    {
        CommonUtils::setDefaultPreferences(store);
        for (const std::string_view name : {Notification::UpdateUI, Notification::UpdateIdentifiers})
            notifications.addObserver(name, [this, name](const void* sender) {
                ++posted[std::string(name)];
                EXPECT_EQ(sender, &screen);
            });
        screen.setReloadData([this] { ++reloads; });
        screen.viewDidLoad();
        screen.viewDidLayoutSubviews(false);
    }

    MemoryPreferenceStore store;
    NotificationCenter notifications;
    SettingsTableViewController screen{{.preferences = store, .notifications = notifications, .soundClassifierAvailable = true, .fontAvailable = {}}};
    std::map<std::string, int> posted;
    int reloads = 0;
};

TEST_F(SettingsFixture, EachSwitchWritesItsKeyAndOnlyTheLayoutOnesPostUpdateUI)
{
    struct Case {
        Switch SettingsTableViewController::*control;
        void (SettingsTableViewController::*action)();
        std::string_view key;
        bool postsUpdateUI;
    };
    using S = SettingsTableViewController;
    const Case cases[] = {
        {&S::switchToneGenerator, &S::switchToneGeneratorToggled, PreferenceKey::ToneGenerator, true},
        {&S::switchSharpsOnly, &S::switchSharpsOnlyToggled, PreferenceKey::SharpsOnly, true},
        {&S::switchPianoView, &S::switchPianoViewToggled, PreferenceKey::PianoView, true},
        {&S::switchGreenOverlay, &S::switchGreenOverlayToggled, PreferenceKey::GreenOverlay, false},
        {&S::switchShowClock, &S::switchShowClockToggled, PreferenceKey::ClockEnabled, false},
        {&S::switchContinuousDisplay, &S::continiousDisplayToggled, PreferenceKey::ContinuousDisplay, false},
        {&S::switchML, &S::switchMLToggled, PreferenceKey::UseML, false},
    };
    for (const Case& c : cases) {
        for (const bool on : {true, false}) {
            posted.clear();
            (screen.*c.control).on = on;
            (screen.*c.action)();
            EXPECT_EQ(store.boolForKey(c.key), on) << c.key;
            EXPECT_EQ(posted["UpdateUI"], c.postsUpdateUI ? 1 : 0) << c.key;
            EXPECT_EQ(posted["UpdateIdentifiers"], 0) << c.key;
        }
    }
}

TEST_F(SettingsFixture, LayoutPassShowsTheStoreAgain)
{
    store.setInteger(442, PreferenceKey::A4);
    store.setBool(true, PreferenceKey::ClockEnabled);
    store.setBool(false, PreferenceKey::GreenOverlay);
    store.setFloat(4.5f, PreferenceKey::LineThickness);
    store.setFloat(25.f, PreferenceKey::Latency);
    store.setInteger(2, PreferenceKey::CenterBarWidth);
    screen.viewDidLayoutSubviews(false);

    EXPECT_EQ(screen.lblFrequency.text, "442 Hz");
    EXPECT_TRUE(screen.switchShowClock.on);
    EXPECT_FALSE(screen.switchGreenOverlay.on);
    EXPECT_TRUE(screen.switchSharpsOnly.on);
    EXPECT_FLOAT_EQ(screen.sliderLineThickness.value(), 4.5f);
    EXPECT_DOUBLE_EQ(screen.lineThicknessConstraint.constant, 2.5);
    EXPECT_FLOAT_EQ(screen.sliderLatency.value(), 25.f);
    EXPECT_EQ(screen.segmentCenterBarWidth.selectedSegmentIndex, 2);
    EXPECT_FALSE(screen.preferredContentSize());
    EXPECT_TRUE(posted.empty()) << "showing values writes and posts nothing";
}

TEST_F(SettingsFixture, SlidersClampAndTheThicknessPreviewFollows)
{
    // A value beyond the slider's range is shown at its end, and the
    // preview follows the slider, not the stored value.
    store.setDouble(40.0, PreferenceKey::LineThickness);
    screen.viewDidLayoutSubviews(true);
    EXPECT_FLOAT_EQ(screen.sliderLineThickness.value(), static_cast<float>(kMaximumLineThickness));
    EXPECT_DOUBLE_EQ(screen.lineThicknessConstraint.constant, kMaximumLineThickness - 2.0);
    EXPECT_EQ(screen.preferredContentSize(), (std::pair{320.0, 348.0}));

    screen.sliderLineThickness.setValue(6.0f);
    screen.lineThicknessValueChanged();
    EXPECT_DOUBLE_EQ(screen.lineThicknessConstraint.constant, 4.0);
    EXPECT_FLOAT_EQ(store.floatForKey(PreferenceKey::LineThickness), 6.0f);

    screen.sliderLatency.setValue(3.0f);
    screen.latencyValueChanged();
    EXPECT_FLOAT_EQ(store.floatForKey(PreferenceKey::Latency), 3.0f);

    screen.segmentCenterBarWidth.selectedSegmentIndex = 0;
    screen.centerBarWidthValueChanged();
    EXPECT_EQ(store.integerForKey(PreferenceKey::CenterBarWidth), 0);
    EXPECT_TRUE(posted.empty());
}

TEST_F(SettingsFixture, SoundClassificationSectionFollowsItsSwitchAndTheSelectedSounds)
{
    const int last = SettingsTableViewController::SoundClassification;
    EXPECT_EQ(screen.numberOfSections(), 11);
    EXPECT_EQ(screen.numberOfRowsInSection(last), 1);
    EXPECT_EQ(screen.titleForFooterInSection(last), "Use machine learning to enable pitch detection only when certain "
                                                    "instruments or vocal sounds are detected.");

    screen.switchML.on = true;
    screen.switchMLToggled();
    EXPECT_EQ(reloads, 1);
    EXPECT_EQ(screen.numberOfRowsInSection(last), 2);

    struct Case {
        bool guitar, violin, piano, voice;
        const char* footer;
    };
    const Case cases[] = {
        {true, false, false, false, "Selected Sounds: Guitar."},
        {false, false, true, false, "Selected Sounds: Piano."},
        {true, false, true, false, "Selected Sounds: Guitar and Piano."},
        {true, true, false, true, "Selected Sounds: Guitar, Violin and Voice."},
        {true, true, true, true, "Selected Sounds: Guitar, Violin, Piano and Voice."},
        {false, false, false, false, ""},
    };
    for (const Case& c : cases) {
        store.setBool(c.guitar, PreferenceKey::SoundsGuitar);
        store.setBool(c.violin, PreferenceKey::SoundsViolin);
        store.setBool(c.piano, PreferenceKey::SoundsPiano);
        store.setBool(c.voice, PreferenceKey::SoundsVoice);
        EXPECT_EQ(screen.titleForFooterInSection(last), c.footer);
    }

    screen.switchML.on = false;
    screen.switchMLToggled();
    EXPECT_EQ(screen.numberOfRowsInSection(last), 1);
    EXPECT_EQ(screen.titleForFooterInSection(0),
              "The frequency of the A above middle C to be used as the reference for tuning.");
    EXPECT_EQ(screen.titleForFooterInSection(11), "");
}

TEST(SettingsScreen, WithoutAClassifierTheLastSectionIsGone)
{
    MemoryPreferenceStore store;
    NotificationCenter notifications;
    SettingsTableViewController screen{
        {.preferences = store, .notifications = notifications, .soundClassifierAvailable = false, .fontAvailable = {}}};
    EXPECT_EQ(screen.numberOfSections(), 10);
}

TEST(FrequencyPicker, OpensOnTheStoredValueStoresEverySelectionAndResets)
{
    MemoryPreferenceStore store;
    CommonUtils::setDefaultPreferences(store);
    FrequencyTableViewController picker(store);
    picker.viewDidLoad();
    EXPECT_EQ(picker.title(), "A\u2084 Frequency");
    EXPECT_EQ(picker.pickerView.selectedRow, 40);
    EXPECT_EQ(picker.titleForRow(40), "440");
    EXPECT_EQ(picker.titleForRow(0), "400");
    EXPECT_EQ(picker.titleForRow(99), "499");
    EXPECT_EQ(picker.numberOfRowsInComponent(0), 100);

    picker.didSelectRow(42);
    EXPECT_EQ(store.integerForKey(PreferenceKey::A4), 442);
    picker.resetTapped();
    EXPECT_EQ(picker.pickerView.selectedRow, 40);
    EXPECT_TRUE(picker.pickerView.animated);
    EXPECT_EQ(store.integerForKey(PreferenceKey::A4), 440);

    // A hand-set value beyond the wheel opens beyond it, and nothing is
    // written until the user picks a row.
    store.setInteger(520, PreferenceKey::A4);
    FrequencyTableViewController reopened(store);
    reopened.viewDidLoad();
    EXPECT_EQ(reopened.pickerView.selectedRow, 120);
    EXPECT_EQ(store.integerForKey(PreferenceKey::A4), 520);
}

} // namespace
} // namespace veltra
