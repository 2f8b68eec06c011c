#include "ClassifyDoubles.h"
#include "classify/SoundCategories.h"
#include "classify/SoundGate.h"
#include "settings/MemoryPreferenceStore.h"

#include <gtest/gtest.h>

#include <sstream>

namespace veltra {
namespace {

using test::result;

struct Categories {
    bool guitar = false, violin = false, piano = false, voice = false;
};

class SoundGateTest : public ::testing::Test {
protected:
    void enable(Categories c)
    {
        store.setBool(c.guitar, PreferenceKey::SoundsGuitar);
        store.setBool(c.violin, PreferenceKey::SoundsViolin);
        store.setBool(c.piano, PreferenceKey::SoundsPiano);
        store.setBool(c.voice, PreferenceKey::SoundsVoice);
        gate.updateIdentifiers();
    }

    MemoryPreferenceStore store;
    std::ostringstream console;
    SoundGate gate{store, console};
};

TEST_F(SoundGateTest, IdentifiersFollowTheCategoriesInTableOrder)
{
    enable({.guitar = true, .violin = true, .piano = true, .voice = true});
    EXPECT_EQ(gate.identifiers(),
              (std::vector<std::string>{"guitar", "electric_guitar", "bass_guitar", "acoustic_guitar",
                                        "steel_guitar_slide_guitar", "guitar_tapping", "guitar_strum",
                                        "violin_fiddle", "piano", "electric_piano", "singing", "humming",
                                        "whistling"}));
    enable({.piano = true, .voice = true});
    EXPECT_EQ(gate.identifiers(), (std::vector<std::string>{"piano", "electric_piano", "singing", "humming", "whistling"}));
}

struct Case {
    const char* name;
    Categories enabled;
    std::vector<SoundClassification> classifications;
    bool detected;
    std::string sound;
    std::string consoleLine;
};

// Names the case in test listings instead of dumping its bytes.
void PrintTo(const Case& c, std::ostream* out)
{
    *out << c.name;
}

class SoundGateCases : public SoundGateTest, public ::testing::WithParamInterface<Case> {};

TEST_P(SoundGateCases, DecidesFromOneResult)
{
    const Case& c = GetParam();
    enable(c.enabled);
    gate.processResult(result(c.classifications));
    EXPECT_EQ(gate.isSoundDetected(), c.detected);
    EXPECT_EQ(gate.currentSound(), c.sound);
    EXPECT_EQ(console.str(), c.consoleLine);
}

INSTANTIATE_TEST_SUITE_P(
    Results, SoundGateCases,
    ::testing::Values(
        Case{"ExactlyHalfIsNotEnough", {.guitar = true}, {{"guitar", 0.5}}, false, "", ""},
        Case{"JustAboveHalfOpens", {.guitar = true}, {{"guitar", 0.5000001}}, true, "guitar",
             "guitar, confidence: 50.000010%\n"},
        Case{"EveryClassificationIsSearched", {.guitar = true}, {{"speech", 0.9}, {"guitar", 0.6}}, true, "guitar",
             "guitar, confidence: 60.000000%\n"},
        Case{"LowMatchDoesNotStopTheSearch", {.guitar = true, .piano = true},
             {{"guitar", 0.4}, {"piano", 0.7}}, true, "piano", "piano, confidence: 70.000000%\n"},
        Case{"EarlierInClassifierOrderWins", {.guitar = true, .piano = true},
             {{"electric_piano", 0.8}, {"guitar", 0.9}}, true, "piano", "electric_piano, confidence: 80.000000%\n"},
        Case{"OnlyViolinRejectsPlainViolin", {.violin = true}, {{"violin", 0.9}}, false, "", ""},
        Case{"OnlyViolinAcceptsViolinFiddle", {.violin = true}, {{"violin", 0.9}, {"violin_fiddle", 0.51}}, true,
             "violin", "violin_fiddle, confidence: 51.000000%\n"},
        Case{"VoiceReportsVocal", {.voice = true}, {{"whistling", 0.75}}, true, "vocal",
             "whistling, confidence: 75.000000%\n"},
        Case{"VocalIsNotALabel", {.voice = true}, {{"vocal", 0.99}}, false, "", ""},
        Case{"LabelsAreCaseSensitive", {.guitar = true}, {{"Guitar", 0.99}}, false, "", ""},
        Case{"DisabledCategoryIsIgnored", {.guitar = true}, {{"piano", 0.99}}, false, "", ""},
        Case{"AllCategoriesOffRejectsEverything", {}, {{"guitar", 0.99}, {"piano", 0.99}}, false, "", ""},
        Case{"EmptyResultRejects", {.guitar = true}, {}, false, "", ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SoundGateTest, ResultWithoutAcceptedLabelClearsAtOnce)
{
    enable({.guitar = true});
    gate.processResult(result({{"acoustic_guitar", 0.9}}));
    ASSERT_TRUE(gate.isSoundDetected());
    gate.processResult(result({{"speech", 0.9}}));
    EXPECT_FALSE(gate.isSoundDetected());
    EXPECT_EQ(gate.currentSound(), "");
}

TEST_F(SoundGateTest, DetectionMovesBetweenCategoriesAndSurvivesAnIdentifierUpdate)
{
    enable({.guitar = true, .voice = true});
    gate.processResult(result({{"guitar_strum", 0.8}}));
    gate.processResult(result({{"singing", 0.8}}));
    EXPECT_EQ(gate.currentSound(), "vocal");
    enable({.piano = true});
    EXPECT_TRUE(gate.isSoundDetected()) << "a preference change waits for the next result";
    gate.processResult(result({{"singing", 0.8}}));
    EXPECT_FALSE(gate.isSoundDetected());
}

} // namespace
} // namespace veltra
