#include "Command.h"
#include "TunerOptions.h"

#include "settings/Preferences.h"
#include "tuning/Temperament.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace veltra::cli {
namespace {

MemoryPreferenceStore parse(const Args& args)
{
    ArgReader reader(args);
    MemoryPreferenceStore preferences = tunerPreferences(reader);
    EXPECT_TRUE(reader.positionals().empty());
    return preferences;
}

std::string refusal(const Args& args)
{
    try {
        parse(args);
    } catch (const UsageError& e) {
        return e.what();
    }
    return "accepted";
}

// Without the options nothing is stored, so the tuner keeps its first
// choices (and the preference file its keys).
TEST(TuningOptions, AbsentOptionsStoreNothing)
{
    const MemoryPreferenceStore preferences = parse({});
    for (const auto key : {PreferenceKey::Temperament, PreferenceKey::Tonic, PreferenceKey::Transpose})
        EXPECT_FALSE(preferences.hasValue(key)) << key;
}

TEST(TuningOptions, NamesAndNumbersBecomePreferences)
{
    const struct {
        Args args;
        std::int64_t temperament;
        std::int64_t tonic;
        std::int64_t transpose;
    } cases[] = {
        {{"--temperament", "equal"}, 0, 0, 0},
        {{"--temperament", "werckmeister-iii", "--tonic", "Eb"}, 4, 3, 0},
        {{"--temperament", "young", "--tonic", "f\u266F"}, 7, 6, 0},
        {{"--tonic", "B"}, 0, 11, 0},
        {{"--transpose", "Bb"}, 0, 0, -2},
        {{"--transpose", "B\u266D"}, 0, 0, -2},
        {{"--transpose", "Eb"}, 0, 0, -9},
        {{"--transpose", "F"}, 0, 0, -7},
        {{"--transpose", "C"}, 0, 0, 0},
        {{"--transpose", "3"}, 0, 0, 3},
        {{"--transpose", "-12"}, 0, 0, -12},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.args));
        const MemoryPreferenceStore preferences = parse(c.args);
        EXPECT_EQ(preferences.integerForKey(PreferenceKey::Temperament), c.temperament);
        EXPECT_EQ(preferences.integerForKey(PreferenceKey::Tonic), c.tonic);
        EXPECT_EQ(preferences.integerForKey(PreferenceKey::Transpose), c.transpose);
    }
}

TEST(TuningOptions, AScalaFileBecomesTheImportedScale)
{
    const auto path = std::filesystem::temp_directory_path() / ("veltra-options-" + std::to_string(::getpid()) + ".scl");
    std::ofstream(path) << "Just\n12\n16/15\n9/8\n6/5\n5/4\n4/3\n45/32\n3/2\n8/5\n5/3\n9/5\n15/8\n2/1\n";
    const MemoryPreferenceStore preferences = parse({"--scala", path.string(), "--tonic", "D"});
    std::filesystem::remove(path);
    EXPECT_EQ(preferences.integerForKey(PreferenceKey::Temperament), static_cast<std::int64_t>(Temperament::Imported));
    EXPECT_EQ(preferences.integerForKey(PreferenceKey::Tonic), 2);
    EXPECT_NEAR(preferences.doubleForKey(kScaleCentsKeys[3]), 386.3137, 1e-4); // 5/4
}

TEST(TuningOptions, BadValuesAreRefusedInOneLine)
{
    const std::pair<Args, std::string> cases[] = {
        {{"--temperament", "mean"},
         "--temperament takes one of equal, pythagorean, quarter-comma-meantone, sixth-comma-meantone, "
         "werckmeister-iii, kirnberger-iii, vallotti, young, just, not 'mean'"},
        {{"--temperament", "imported"},
         "--temperament takes one of equal, pythagorean, quarter-comma-meantone, sixth-comma-meantone, "
         "werckmeister-iii, kirnberger-iii, vallotti, young, just, not 'imported'"},
        {{"--temperament", "just", "--scala", "x.scl"}, "--temperament and --scala both choose the tuning system: give one"},
        {{"--scala", "/nonexistent/x.scl"}, "/nonexistent/x.scl: no such file"},
        {{"--tonic", "H"}, "'H' is not a note name"},
        {{"--tonic", "C4"}, "--tonic takes a note without an octave, such as D or Eb, not 'C4'"},
        {{"--transpose", "13"}, "--transpose must be from -12 to 12 semitones, not '13'"},
        {{"--transpose", "D"}, "--transpose takes C, Bb, Eb, F or semitones from -12 to 12, not 'D'"},
        {{"--transpose", "Bb3"}, "--transpose takes C, Bb, Eb, F or semitones from -12 to 12, not 'Bb3'"},
        {{"--transpose", "2.5"}, "--transpose takes C, Bb, Eb, F or semitones from -12 to 12, not '2.5'"},
        {{"--transpose"}, "--transpose needs a value"},
    };
    for (const auto& [args, why] : cases) {
        const std::string text = refusal(args);
        EXPECT_NE(text.find(why), std::string::npos) << testing::PrintToString(args) << ": " << text;
    }
}

} // namespace
} // namespace veltra::cli
