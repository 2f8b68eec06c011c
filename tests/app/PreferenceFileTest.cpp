#include "app/qt/QSettingsPreferenceStore.h"
#include "dsp/PatchFile.h"
#include "settings/Preferences.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace veltra {
namespace {

struct PreferenceFile : ::testing::Test {
    std::filesystem::path dir = std::filesystem::temp_directory_path() / ("veltra-prefs-" + makeUuidString());
    std::filesystem::path file = dir / "veltra.ini";
    std::ostringstream console;

    void SetUp() override { std::filesystem::create_directories(dir); }
    void TearDown() override { std::filesystem::remove_all(dir); }

    std::unique_ptr<PreferenceStore> open(const std::filesystem::path& path)
    {
        return QSettingsPreferenceStore::open(QString::fromStdString(path.string()), console);
    }
    long lineCount() const
    {
        const std::string text = console.str();
        return std::count(text.begin(), text.end(), '\n');
    }
    std::string contents() const
    {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
};

TEST_F(PreferenceFile, ValuesSurviveARestartWithTheirTypes)
{
    {
        auto store = open(file);
        CommonUtils::setDefaultPreferences(*store);
        store->setFloat(4.5f, PreferenceKey::LineThickness);
        store->setFloat(0.1f, "Tenth");
        store->setBool(false, PreferenceKey::GreenOverlay);
        store->setInteger(432, PreferenceKey::A4);
    }
    auto store = open(file);
    CommonUtils::setDefaultPreferences(*store); // a second launch changes nothing
    EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 432);
    EXPECT_EQ(store->floatForKey(PreferenceKey::LineThickness), 4.5f);
    EXPECT_EQ(store->floatForKey("Tenth"), 0.1f);
    EXPECT_EQ(store->doubleForKey(PreferenceKey::Latency), 10.0);
    EXPECT_EQ(store->integerForKey(PreferenceKey::Latency), 10);
    EXPECT_TRUE(store->hasValue(PreferenceKey::GreenOverlay));
    EXPECT_FALSE(store->boolForKey(PreferenceKey::GreenOverlay));
    EXPECT_TRUE(store->boolForKey(PreferenceKey::SharpsOnly));
    EXPECT_FALSE(store->hasValue("Missing"));
    EXPECT_EQ(store->integerForKey("Missing"), 0);
    EXPECT_TRUE(console.str().empty());
}

TEST_F(PreferenceFile, AFileThatIsNotOursIsLeftUntouched)
{
    for (const std::string& corrupt : {std::string("\x89PNG\r\n\x1a\n\0\0binary", 16),
                                      std::string("[General]\nA4=440\nthis line is no setting\n")}) {
        {
            std::ofstream out(file, std::ios::binary);
            out << corrupt;
        }
        console.str("");
        auto store = open(file);
        CommonUtils::setDefaultPreferences(*store);
        store->setInteger(442, PreferenceKey::A4);
        EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 442); // runs on, in memory
        EXPECT_EQ(contents(), corrupt);
        EXPECT_NE(console.str().find("is not usable"), std::string::npos);
        EXPECT_EQ(lineCount(), 1);
    }
}

TEST_F(PreferenceFile, AnUnwritableFileIsReportedOnceAndValuesStillApply)
{
    std::ofstream(dir / "a-file") << "in the way";
    auto store = open(dir / "a-file" / "veltra.ini");
    CommonUtils::setDefaultPreferences(*store);
    store->setInteger(445, PreferenceKey::A4);
    EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 445);
    EXPECT_NE(console.str().find("cannot be saved"), std::string::npos);
    EXPECT_EQ(lineCount(), 1);
}

} // namespace
} // namespace veltra
