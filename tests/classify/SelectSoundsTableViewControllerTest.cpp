#include "classify/SelectSoundsTableViewController.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"

#include <gtest/gtest.h>

namespace veltra {
namespace {

class SelectSoundsTest : public ::testing::Test {
protected:
    SelectSoundsTest()
    {
        CommonUtils::setDefaultPreferences(store);
        notifications.addObserver(Notification::UpdateIdentifiers, [this](const void* sender) {
            ++posted;
            EXPECT_EQ(sender, &screen);
        });
    }

    std::vector<bool> checked() const
    {
        std::vector<bool> rows;
        for (int row = 0; row < SelectSoundsTableViewController::kRowCount; ++row)
            rows.push_back(screen.isChecked(row));
        return rows;
    }

    MemoryPreferenceStore store;
    NotificationCenter notifications;
    int posted = 0;
    int reloads = 0;
    SelectSoundsTableViewController screen{store, notifications, [this] { ++reloads; }};
};

TEST_F(SelectSoundsTest, RowsMapToTheSoundKeysInOrder)
{
    EXPECT_EQ(SelectSoundsTableViewController::keyForRow(0), PreferenceKey::SoundsGuitar);
    EXPECT_EQ(SelectSoundsTableViewController::keyForRow(1), PreferenceKey::SoundsViolin);
    EXPECT_EQ(SelectSoundsTableViewController::keyForRow(2), PreferenceKey::SoundsPiano);
    EXPECT_EQ(SelectSoundsTableViewController::keyForRow(3), PreferenceKey::SoundsVoice);
    EXPECT_EQ(SelectSoundsTableViewController::keyForRow(4), std::nullopt);
    EXPECT_EQ(SelectSoundsTableViewController::keyForRow(-1), std::nullopt);
}

TEST_F(SelectSoundsTest, TapSequencesKeepAtLeastOneRowChecked)
{
    struct Case {
        const char* name;
        std::vector<int> taps;
        std::vector<bool> checked;
    };
    const Case cases[] = {
        {"last checked row stays checked", {0}, {true, false, false, false}},
        {"violin then guitar leaves violin", {1, 0}, {false, true, false, false}},
        {"all on, then off down to voice", {1, 2, 3, 0, 1, 2, 3}, {false, false, false, true}},
        {"a tap switches back on", {2, 2}, {true, false, false, false}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CommonUtils::setDefaultPreferences(store);
        for (const auto& category : {PreferenceKey::SoundsGuitar, PreferenceKey::SoundsViolin,
                                     PreferenceKey::SoundsPiano, PreferenceKey::SoundsVoice})
            store.setBool(category == PreferenceKey::SoundsGuitar, category);
        posted = 0;
        for (int row : c.taps)
            screen.didSelectRow(row);
        EXPECT_EQ(checked(), c.checked);
        EXPECT_EQ(posted, static_cast<int>(c.taps.size())) << "one UpdateIdentifiers per toggle";
        EXPECT_TRUE(screen.isAnySoundSelected());
    }
}

TEST_F(SelectSoundsTest, TappingTheOnlyCheckedRowStoresTrueAgainAndStillPosts)
{
    screen.toggleSound(PreferenceKey::SoundsGuitar);
    EXPECT_TRUE(store.boolForKey(PreferenceKey::SoundsGuitar));
    EXPECT_EQ(posted, 1);
}

TEST_F(SelectSoundsTest, RowWithoutKeyOnlyRefreshes)
{
    screen.didSelectRow(4);
    EXPECT_EQ(posted, 0);
    EXPECT_EQ(reloads, 1) << "the settings footer is refreshed after every tap";
    EXPECT_EQ(checked(), (std::vector<bool>{true, false, false, false}));
}

} // namespace
} // namespace veltra
