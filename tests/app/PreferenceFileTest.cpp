#include "app/OfflineTuner.h"
#include "dsp/PatchFile.h"
#include "settings/IniPreferenceStore.h"
#include "settings/PreferenceRules.h"
#include "settings/Preferences.h"
#include "support/Lines.h"
#include "support/Signals.h"
#include "tuning/Note.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
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
        return IniPreferenceStore::open(path, console);
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
    void writeFile(const std::string& text) const { std::ofstream(file, std::ios::binary) << text; }
};

// A file as the tuner writes it, with every key, so that starting up has
// nothing to add; replaced lines stand for the user's edits.
std::string completeFile(const std::map<std::string_view, std::string>& replaced = {})
{
    std::string text = "[General]\n";
    for (const PreferenceDefault& d : kPreferenceDefaults) {
        const auto edit = replaced.find(d.key);
        const std::string value = edit != replaced.end()
            ? edit->second
            : std::visit(
                  [](auto v) {
                      if constexpr (std::is_same_v<decltype(v), bool>)
                          return std::string(v ? "true" : "false");
                      else
                          return (std::ostringstream() << v).str();
                  },
                  d.value);
        text += std::string(d.key) + "=" + value + "\n";
    }
    return text;
}

double defaultAsDouble(std::string_view key)
{
    return std::visit([](auto v) { return static_cast<double>(v); }, defaultValue(*preferenceRule(key)));
}

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

TEST_F(PreferenceFile, AMissingFolderIsCreatedAtTheFirstSave)
{
    const auto nested = dir / "config" / "veltra" / "veltra.ini";
    {
        auto store = open(nested);
        CommonUtils::setDefaultPreferences(*store);
    }
    EXPECT_EQ(open(nested)->integerForKey(PreferenceKey::A4), 440);
    EXPECT_TRUE(console.str().empty()) << console.str();
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

// Values a user may leave in the file by hand, by a sync tool or by an old
// version: each reads as its key's default, is named in one line, and the
// file keeps its text.
TEST_F(PreferenceFile, UnusableValuesReadAsDefaultsAndLeaveTheFileAsItIs)
{
    const struct {
        std::string_view key;
        std::string text;
        std::string shown; // how the line quotes the value
    } cases[] = {
        {PreferenceKey::Latency, "nan", "nan"},
        {PreferenceKey::Latency, "1e40", "1e40"},
        {PreferenceKey::Latency, "-inf", "-inf"},
        {PreferenceKey::Latency, "0", "0"},
        {PreferenceKey::Latency, "1, 2", "1, 2"},
        {PreferenceKey::LineThickness, "1e40", "1e40"},
        {PreferenceKey::LineThickness, "NaN", "NaN"},
        {PreferenceKey::A4, "0", "0"},
        {PreferenceKey::A4, "-440", "-440"},
        {PreferenceKey::A4, "1e300", "1e300"},
        {PreferenceKey::A4, "440.5", "440.5"},
        {PreferenceKey::A4, "", ""},
        {PreferenceKey::A4, "@Variant(garbage)", "@Variant(garbage)"},
        {PreferenceKey::A4, std::string(200, '4'), std::string(40, '4') + "..."},
        {PreferenceKey::CenterBarWidth, "3", "3"},
        {PreferenceKey::CenterBarWidth, "-1", "-1"},
        {PreferenceKey::GreenOverlay, "maybe", "maybe"},
        {PreferenceKey::SharpsOnly, "2", "2"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.key) + "=" + c.text);
        const std::string before = completeFile({{c.key, c.text}});
        writeFile(before);
        console.str("");
        {
            auto store = open(file);
            CommonUtils::setDefaultPreferences(*store);
            EXPECT_TRUE(store->hasValue(c.key));
            EXPECT_EQ(store->doubleForKey(c.key), defaultAsDouble(c.key));
            EXPECT_EQ(store->integerForKey(c.key), static_cast<std::int64_t>(defaultAsDouble(c.key)));
            EXPECT_EQ(store->boolForKey(c.key), defaultAsDouble(c.key) != 0);
        }
        EXPECT_EQ(contents(), before);
        EXPECT_EQ(lineCount(), 1) << console.str();
        EXPECT_NE(console.str().find(std::string(c.key) + "=" + c.shown + " is not usable"), std::string::npos)
            << console.str();
    }
}

// All of them at once: the whole reading road (the note arithmetic with A4,
// the graph with Latency and LineThickness) runs on the defaults.
TEST_F(PreferenceFile, TheTunerRunsOnDefaultsWhateverTheFileHolds)
{
    const std::string before = completeFile({{PreferenceKey::A4, "0"},
                                             {PreferenceKey::Latency, "nan"},
                                             {PreferenceKey::LineThickness, "-1e40"},
                                             {PreferenceKey::CenterBarWidth, "99"},
                                             {PreferenceKey::PianoView, "sometimes"}});
    writeFile(before);
    {
        auto store = open(file);
        CommonUtils::setDefaultPreferences(*store);
        OfflineTuner tuner(*store, 48000);
        tuner.run(test::sine(440.0, 0.3, 2.0, 48000));
        EXPECT_EQ(tuner.screen().labels().noteName, "A");
        EXPECT_EQ(tuner.screen().labels().deviation, "+0.0%");
    }
    EXPECT_EQ(lineCount(), 5) << console.str();
    EXPECT_EQ(contents(), before);
}

TEST_F(PreferenceFile, ChangingASettingRewritesOnlyItsLine)
{
    const std::string mine = "; tuned for the choir\r\nMine = kept\r\n[Other]\nA4=1\n";
    const std::string before = completeFile({{PreferenceKey::Latency, "nan"}}) + mine;
    writeFile(before);
    auto store = open(file);
    store->setInteger(442, PreferenceKey::A4);
    std::string expected = before;
    expected.replace(expected.find("A4=440"), 6, "A4=442");
    EXPECT_EQ(contents(), expected);
    EXPECT_EQ(store->doubleForKey(PreferenceKey::Latency), defaultAsDouble(PreferenceKey::Latency));

    store->setDouble(12, PreferenceKey::Latency);
    EXPECT_EQ(store->doubleForKey(PreferenceKey::Latency), 12);
    expected.replace(expected.find("Latency=nan"), 11, "Latency=12");
    EXPECT_EQ(contents(), expected);
    EXPECT_EQ(lineCount(), 1) << console.str(); // Latency=nan, once
}

// A save cut off half-way leaves the previous file whole, whether the
// process dies there (a crash) or the write fails (a full disk). The child
// may write files of half the preference file's size only, so its save
// stops in the middle.
TEST_F(PreferenceFile, ASaveCutOffHalfWayLeavesThePreviousFile)
{
    writeFile(completeFile() + "Padding=" + std::string(1 << 20, 'x') + "\n");
    const std::string before = contents();
    constexpr int kReported = 3, kNotReported = 4;
    for (const bool dies : {true, false}) {
        SCOPED_TRACE(dies ? "the process dies" : "the write fails");
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            const rlimit noCore{0, 0}, half{before.size() / 2, before.size() / 2};
            setrlimit(RLIMIT_CORE, &noCore);
            setrlimit(RLIMIT_FSIZE, &half);
            signal(SIGXFSZ, dies ? SIG_DFL : SIG_IGN);
            std::ostringstream childConsole;
            auto store = IniPreferenceStore::open(file, childConsole);
            store->setInteger(442, PreferenceKey::A4);
            _exit(childConsole.str().find("cannot be saved") != std::string::npos ? kReported : kNotReported);
        }
        int status = 0;
        waitpid(child, &status, 0);
        if (dies)
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << status;
        else
            EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == kReported) << status << " " << WEXITSTATUS(status) << " " << WTERMSIG(status);
        EXPECT_TRUE(contents() == before) << contents().size() << " bytes";
    }
}

// A bounded random run over what a preference file can hold: lines the
// tuner writes, with values a user, a sync tool or a damaged disk may leave.
TEST_F(PreferenceFile, RandomFilesNeitherStopTheTunerNorAreRewritten)
{
    const std::vector<std::string> values = {
        "440", "10", "true", "false", "nan", "-nan", "inf", "-inf", "1e308", "1e400", "-0", "4.4e2", "1e-320",
        "", " ", "0x1b8", "\"440\"", "1,2", "a, b, c", "@Variant(\\0\\0\\0\\x7f)", "@ByteArray(440)",
        "@Rect(1 2 3 4)", "@Variant(", "\\", "\xd9\xa4\xd9\xa4\xd9\xa0", "TRUE", "2", "99999999999999999999",
    };
    std::vector<std::string> keys;
    for (const PreferenceDefault& d : kPreferenceDefaults)
        keys.emplace_back(d.key);
    keys.insert(keys.end(), {"Unknown", "a4", "General/A4", "%41%34", "A4 ", "Other/Latency"});
    const std::vector<std::string> oddLines = {"[General]", "[Other]", "[", "; note", "# note", "=", "==", "\r", ""};

    std::mt19937 random(8);
    const auto pick = [&random](const std::vector<std::string>& from) { return from[random() % from.size()]; };
    constexpr int kFiles = 2000; // about a second
    for (int n = 0; n < kFiles; ++n) {
        std::string text;
        for (std::size_t lines = random() % 24; lines > 0; --lines) {
            if (random() % 6 == 0)
                text += pick(oddLines);
            else
                text += pick(keys) + "=" + (random() % 4 ? pick(values) : std::to_string(std::int64_t(random()) - 2147483648));
            text += random() % 10 ? "\n" : "\r\n";
        }
        if (random() % 8 == 0 && !text.empty()) // damage a byte
            text[random() % text.size()] = static_cast<char>(random());
        SCOPED_TRACE(testing::PrintToString(text));
        writeFile(text);
        console.str("");
        {
            auto store = open(file);
            for (const std::string& key : keys)
                static_cast<void>(store->doubleForKey(key) + store->boolForKey(key));
            // Every number the tuner is handed lies within its control's
            // range (a key not in the file gets its default at start-up).
            for (const PreferenceDefault& d : kPreferenceDefaults) {
                const PreferenceRule& rule = *preferenceRule(d.key);
                if (rule.type == PreferenceRule::Type::Boolean || !store->hasValue(d.key))
                    continue;
                const double value = store->doubleForKey(d.key);
                EXPECT_TRUE(value >= rule.minimum && value <= rule.maximum) << d.key << " " << value;
            }
            if (store->hasValue(PreferenceKey::A4)) {
                EXPECT_TRUE(std::isfinite(noteNumberForFrequency(440.0f, store->integerForKey(PreferenceKey::A4))));
            }
        }
        ASSERT_EQ(contents(), text); // reading never writes
        for (const std::string& line : test::lines(console.str()))
            EXPECT_EQ(line.rfind("Preferences file ", 0), 0u) << line;
    }
}

} // namespace
} // namespace veltra
