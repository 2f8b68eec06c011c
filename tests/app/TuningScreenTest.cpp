#include "support/PageCheck.h"
#include "support/UiRig.h"

#include "settings/Preferences.h"

#include <gtest/gtest.h>

namespace veltra::test {
namespace {

class TuningSections : public InEveryLanguage {};

// The tuning sections at the end of the settings: the choices reach the
// preferences, the controls show what is stored, and a Scala file that
// cannot be used is refused in one line while the choice stays; the
// sections fit the window. Pictured in English and German.
TEST_P(TuningSections, ChoicesReachThePreferencesAndShowWhatIsStored)
{
    UiRig rig({420, 860});
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    TuningSettingsScreen& tuning = *rig.screens->tuning();
    EXPECT_FALSE(rig.preferences.hasValue(PreferenceKey::Temperament));
    EXPECT_EQ(tuning.temperamentCount(), 9); // no imported scale yet

    tuning.setTemperament(4);
    tuning.setTonic(2);
    rig.item("instrumentKey")->forceActiveFocus();
    rig.settle();
    tuning.setKeySegment(1);
    tuning.importScala(QStringLiteral("/nonexistent/scale.scl"));
    rig.settle();
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Temperament), 4);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Tonic), 2);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Transpose), -2);
    EXPECT_EQ(rig.item("temperament")->property("currentIndex").toInt(), 4);
    EXPECT_EQ(rig.item("transpose")->property("value").toInt(), -2);
    EXPECT_TRUE(rig.shown("importProblem"));
    EXPECT_TRUE(tuning.importProblem().endsWith(QStringLiteral("/nonexistent/scale.scl: no such file")));
    for (const std::string& fault : PageCheck(*rig.window, false).faults(rig.item("settingsPage")))
        ADD_FAILURE() << fault;
    if (GetParam() == "en" || GetParam() == "de")
        rig.screenshot(("settings-tuning" + std::string(GetParam() == "de" ? "-de" : "")).c_str());
}

INSTANTIATE_TEST_SUITE_P(Languages, TuningSections, ::testing::Values("en", "de"), InEveryLanguage::name);

} // namespace
} // namespace veltra::test
