// The screens' logic writes every text a person reads through the
// localization, whole sentences with placeholders, and every number a
// person reads through its number form; without one installed, English
// and '.' as always.
#include "app/ViewController.h"
#include "classify/SelectSoundsTableViewController.h"
#include "settings/FrequencyTableViewController.h"
#include "settings/Localization.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "settings/SettingsTableViewController.h"
#include "share/MoreOptionsMenu.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veltra {
namespace {

TEST(FillIn, PutsEachValueAtItsPlaceholderInOnePass)
{
    struct Case {
        const char* pattern;
        std::initializer_list<std::string_view> values;
        const char* text;
    };
    const Case cases[] = {
        {"%1 and %2", {"Guitar", "Voice"}, "Guitar and Voice"},
        {"%2 und %1", {"Gitarre", "Stimme"}, "Stimme und Gitarre"}, // a translation may reorder
        {"升%1", {"C"}, "升C"},                                     // and put it anywhere
        {"%1 %1", {"x"}, "x x"},
        {"%1, %2", {"a %2", "b"}, "a %2, b"}, // a value is never read as a pattern
        {"%3 left as it is", {"a"}, "%3 left as it is"},
        {"100% sure", {"a"}, "100% sure"},
        {"ends in %", {}, "ends in %"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(fillIn(c.pattern, c.values), c.text) << c.pattern;
}

// A stand-in language: every text in brackets with its context, every
// number with a decimal comma. A text that skips the localization shows
// without brackets; a sentence glued from pieces shows nested brackets
// only where a placeholder took a translated piece.
class Bracketed : public ::testing::Test {
protected:
    void SetUp() override
    {
        installLocalization({
            .translate = [](const char* context, const char* text) {
                return "[" + std::string(context) + ":" + text + "]";
            },
            .number = [](std::string_view number) {
                std::string text(number);
                std::replace(text.begin(), text.end(), '.', ',');
                return text;
            },
        });
        CommonUtils::setDefaultPreferences(store);
    }
    void TearDown() override { installLocalization({}); }

    MemoryPreferenceStore store;
    NotificationCenter notifications;
};

TEST_F(Bracketed, TheSpokenReadoutIsOneTranslatedSentenceWithLocalNumbers)
{
    EXPECT_EQ(ViewController::spokenReadout({"C", "#", "3", "-13.4%", "137.6"}),
              "[Readout:[Readout:C sharp] 3, [Readout:13,4 cents flat], 137,6 hertz]");
    EXPECT_EQ(ViewController::spokenReadout({"B", "b", "2", "+0.0%", "116.5"}),
              "[Readout:[Readout:B flat] 2, [Readout:in tune], 116,5 hertz]");
}

TEST_F(Bracketed, SettingsTitleRowsAndFootersAreTranslated)
{
    SettingsTableViewController settings{{.preferences = store,
                                          .notifications = notifications,
                                          .soundClassifierAvailable = true,
                                          .fontAvailable = {}}};
    settings.viewDidLoad();
    settings.viewDidLayoutSubviews(false);
    EXPECT_EQ(settings.title(), "[Settings:Settings]");
    EXPECT_EQ(settings.lblFrequency.text, "[Settings:440 Hz]");
    for (int section = 0; section < settings.numberOfSections(); ++section)
        EXPECT_EQ(settings.titleForFooterInSection(section).front(), '[') << section;

    store.setBool(true, PreferenceKey::UseML);
    for (const std::string_view key : {PreferenceKey::SoundsGuitar, PreferenceKey::SoundsViolin, PreferenceKey::SoundsVoice})
        store.setBool(true, key);
    store.setBool(false, PreferenceKey::SoundsPiano);
    // The joints are translated too, the names each on their own.
    EXPECT_EQ(settings.titleForFooterInSection(SettingsTableViewController::SoundClassification),
              "[Settings:Selected Sounds: [SoundList:[SoundList:[SoundList:Guitar], [SoundList:Violin]] and "
              "[SoundList:Voice]].]");

    FrequencyTableViewController picker(store);
    picker.viewDidLoad();
    EXPECT_EQ(picker.title(), "[Picker:A\u2084 Frequency]");
    SelectSoundsTableViewController sounds(store, notifications, {});
    sounds.viewDidLoad();
    EXPECT_EQ(sounds.title(), "[Sounds:Select Sounds]");
}

TEST_F(Bracketed, MenuEntriesShareTextAndAlertAreTranslated)
{
    std::vector<MoreOptionsMenu::ShareSheet> sheets;
    std::vector<Alert> alerts;
    MoreOptionsMenu menu(store, {.openURL = [](const std::string&) { return false; },
                                 .presentShareSheet = [&](const auto& sheet) { sheets.push_back(sheet); },
                                 .canSendMail = [] { return false; },
                                 .presentAlert = [&](const Alert& alert) { alerts.push_back(alert); },
                                 .requestReview = [] { return false; },
                                 .mainQueue = [](auto task) { task(); }});
    menu.setupMoreOptionsMenu();
    for (const auto& action : menu.menu())
        EXPECT_TRUE(action.title.starts_with("[Menu:")) << action.title;
    menu.shareApp();
    menu.contactUs();
    ASSERT_EQ(sheets.size(), 1u);
    EXPECT_TRUE(sheets[0].text.starts_with("[Menu:I've been using")) << sheets[0].text;
    EXPECT_NE(sheets[0].text.find("@veltratuner"), std::string::npos) << "the handle fills its placeholder";
    ASSERT_EQ(alerts.size(), 1u);
    for (const std::string& text : {alerts[0].title, alerts[0].message, alerts[0].dismissTitle})
        EXPECT_TRUE(text.starts_with("[Menu:")) << text;
    // The address support receives stays as it is.
    EXPECT_EQ(MoreOptionsMenu::contactAddress().find('['), std::string::npos);
}

TEST(Localization, WithoutOneTextsStayEnglishAndNumbersKeepTheirPoint)
{
    installLocalization({});
    EXPECT_EQ(translate("Settings", "Settings"), "Settings");
    EXPECT_EQ(localNumber("440.5"), "440.5");
    EXPECT_EQ(ViewController::spokenReadout({"A", "", "4", "+2.0%", "440.5"}), "A 4, 2.0 cents sharp, 440.5 hertz");
}

} // namespace
} // namespace veltra
