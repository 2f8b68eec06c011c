#include "settings/MemoryPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "settings/Preferences.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltra {
namespace {

using ::testing::ElementsAre;

TEST(DefaultPreferences, FirstLaunchWritesEveryKeyWithItsType)
{
    MemoryPreferenceStore store;
    CommonUtils::setDefaultPreferences(store);

    struct Expected {
        std::string_view key;
        MemoryPreferenceStore::Value value;
    };
    const Expected expected[] = {
        {"A4", std::int64_t{440}}, {"ClockEnabled", false}, {"LineThickness", 6.0},
        {"GreenOverlay", true},    {"SharpsOnly", true},    {"ToneGenerator", true},
        {"PianoView", false},      {"UseML", false},        {"Sounds_Guitar", true},
        {"Sounds_Violin", false},  {"Sounds_Piano", false}, {"Sounds_Voice", false},
        {"ContinuousDisplay", false}, {"Latency", 10.0},    {"CenterBarWidth", std::int64_t{1}},
    };
    for (const Expected& e : expected) {
        const auto* stored = store.valueForKey(e.key);
        ASSERT_NE(stored, nullptr) << e.key;
        EXPECT_EQ(*stored, e.value) << e.key; // value and the setter's type
    }
    EXPECT_EQ(store.integerForKey("A4"), 440);
}

TEST(DefaultPreferences, StoredValuesAreNeverOverwritten)
{
    MemoryPreferenceStore store;
    store.setBool(false, PreferenceKey::GreenOverlay);   // a present false counts as present
    store.setDouble(3.5, PreferenceKey::Latency);
    store.setBool(true, PreferenceKey::A4);               // even a value of another type
    store.setInteger(432, PreferenceKey::CenterBarWidth);
    CommonUtils::setDefaultPreferences(store);
    CommonUtils::setDefaultPreferences(store);

    EXPECT_FALSE(store.boolForKey(PreferenceKey::GreenOverlay));
    EXPECT_EQ(store.doubleForKey(PreferenceKey::Latency), 3.5);
    EXPECT_EQ(*store.valueForKey(PreferenceKey::A4), MemoryPreferenceStore::Value(true));
    EXPECT_EQ(store.integerForKey(PreferenceKey::CenterBarWidth), 432);
    EXPECT_TRUE(store.boolForKey(PreferenceKey::SharpsOnly)); // missing keys still filled
}

TEST(MemoryPreferenceStore, ReadsConvertBetweenNumberTypes)
{
    MemoryPreferenceStore store;
    store.setFloat(4.5f, "LineThickness");
    store.setDouble(10.0, "Latency");
    store.setInteger(442, "A4");
    store.setDouble(0.1, "Tenth");
    EXPECT_EQ(store.floatForKey("LineThickness"), 4.5f);
    EXPECT_EQ(store.doubleForKey("LineThickness"), 4.5);
    EXPECT_EQ(store.floatForKey("Latency"), 10.0f);
    EXPECT_EQ(store.integerForKey("Latency"), 10);
    EXPECT_EQ(store.doubleForKey("A4"), 442.0);
    EXPECT_TRUE(store.boolForKey("A4"));
    EXPECT_EQ(store.floatForKey("Tenth"), 0.1f);

    // Missing keys read as false, 0 and 0.0.
    EXPECT_FALSE(store.hasValue("Missing"));
    EXPECT_FALSE(store.boolForKey("Missing"));
    EXPECT_EQ(store.integerForKey("Missing"), 0);
    EXPECT_EQ(store.floatForKey("Missing"), 0.0f);
}

TEST(NotificationCenter, DeliversByNameInOrderUntilRemoved)
{
    NotificationCenter center;
    std::vector<std::string> seen;
    int sender = 0;
    const auto first = center.addObserver(Notification::UpdateUI, [&](const void* s) {
        seen.push_back(s == &sender ? "first from sender" : "first");
    });
    center.addObserver(Notification::UpdateUI, [&](const void*) { seen.push_back("second"); });
    center.addObserver(Notification::UpdateIdentifiers, [&](const void*) { seen.push_back("identifiers"); });

    center.post(Notification::UpdateUI, &sender);
    center.removeObserver(first);
    center.post(Notification::UpdateUI);
    EXPECT_THAT(seen, ElementsAre("first from sender", "second", "second"));
}

} // namespace
} // namespace veltra
