#include "app/qt/Translations.h"
#include "support/UiRig.h"

#include <gtest/gtest.h>

namespace veltra::test {
namespace {

class InputScreens : public ::testing::Test {
protected:
    static void SetUpTestSuite() { UiRig::ensureApplication(); }
    void TearDown() override { Translations::use(QLocale(QLocale::English)); }
};

// The choice of input in the settings, in English and German: a chosen
// input that is away stays listed, and a tap on the default chooses it.
TEST_F(InputScreens, TheSettingsListTheInputsAndKeepTheChoice)
{
    const struct {
        const char* locale;
        const char* away;
        const char* screenshot;
    } cases[] = {
        {"en_US", "usb-mic.monitor (not connected)", "settings-input"},
        {"de_DE", "usb-mic.monitor (nicht verbunden)", "settings-input-de"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.locale);
        Translations::use(QLocale(QString::fromLatin1(c.locale)));
        UiRig rig({420, 860}, [](PreferenceStore& p) { p.setString("usb-mic.monitor", PreferenceKey::InputSource); });
        rig.screens->navigation()->push(QStringLiteral("Settings"));
        rig.settle();
        EXPECT_EQ(rig.screens->inputs()->rows().size(), 2);
        EXPECT_EQ(rig.item("input1")->property("text").toString(), QString::fromUtf8(c.away));
        EXPECT_TRUE(rig.item("input1")->property("checked").toBool());
        rig.scrollIntoView(*rig.item("input1"));
        rig.settle();
        rig.screenshot(c.screenshot);
        rig.click("input0");
        EXPECT_EQ(rig.preferences.stringForKey(PreferenceKey::InputSource), "");
        EXPECT_TRUE(rig.item("input0")->property("checked").toBool());
    }
}

// The picker's "listen for an A" hears the tuner's own input: an A at
// 441.3 Hz moves the wheel to 441, and the message says so.
TEST_F(InputScreens, TheReferenceIsTakenFromAHeardA)
{
    for (const char* locale : {"en_US", "de_DE"}) {
        SCOPED_TRACE(locale);
        Translations::use(QLocale(QString::fromLatin1(locale)));
        UiRig rig;
        rig.screens->navigation()->push(QStringLiteral("Settings"));
        rig.settle();
        rig.click("referenceFrequency");
        rig.click("listenForA");
        EXPECT_TRUE(rig.screens->heardReference()->listening());
        rig.hear(sine(441.3, 0.3, 2.0, 48000));
        rig.settle();
        EXPECT_FALSE(rig.screens->heardReference()->listening());
        EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 441);
        EXPECT_EQ(rig.item("wheel")->property("currentIndex").toInt(), 41);
        const QString message = rig.item("heardMessage")->property("text").toString();
        EXPECT_EQ(message, std::string(locale) == "en_US" ? QStringLiteral("Reference A set to 441 Hz.")
                                                          : QStringLiteral("Referenz-A auf 441 Hz gesetzt."));
        rig.screenshot(std::string(locale) == "en_US" ? "frequency-heard" : "frequency-heard-de");
    }
}

} // namespace
} // namespace veltra::test
