#include "app/OfflineTuner.h"
#include "dsp/PatchFile.h"
#include "settings/IniPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "settings/PreferenceRules.h"
#include "settings/Preferences.h"
#include "support/Lines.h"
#include "support/Signals.h"
#include "tuning/Note.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
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
    // Open as the app does: watched from the start.
    std::unique_ptr<PreferenceStore> openWatched(const std::filesystem::path& path)
    {
        auto store = open(path);
        EXPECT_GE(store->watchDescriptor(), 0);
        return store;
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
    // The names in the test's folder, the user's file among them.
    std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(dir))
            found.push_back(entry.path().filename().string());
        std::sort(found.begin(), found.end());
        return found;
    }
};

// Whether the store's watch says the file changed within a few seconds
// (inotify answers in microseconds; the margin is for a loaded machine).
bool watchFires(const PreferenceStore& store)
{
    pollfd watch{store.watchDescriptor(), POLLIN, 0};
    return watch.fd >= 0 && ::poll(&watch, 1, 5000) == 1;
}

std::string textOf(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

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

// The chosen input is text: kept as it is, no default written for it at
// the first launch, and a name the file cannot hold refused at both doors.
TEST_F(PreferenceFile, TheChosenInputIsKeptAsTextAndBadNamesReadAsTheDefault)
{
    {
        auto store = open(file);
        CommonUtils::setDefaultPreferences(*store);
        EXPECT_FALSE(store->hasValue(PreferenceKey::InputSource));
        EXPECT_EQ(store->stringForKey(PreferenceKey::InputSource), "");
        store->setString("alsa_input.usb-Focusrite.analog-stereo", PreferenceKey::InputSource);
        store->setString("two\nlines", PreferenceKey::InputSource);
    }
    EXPECT_EQ(lineCount(), 1) << console.str(); // the refused name
    EXPECT_NE(contents().find("\nInputSource=alsa_input.usb-Focusrite.analog-stereo\n"), std::string::npos);
    EXPECT_EQ(open(file)->stringForKey(PreferenceKey::InputSource), "alsa_input.usb-Focusrite.analog-stereo");
    EXPECT_EQ(open(file)->doubleForKey(PreferenceKey::InputSource), 0.0);

    const std::string edited = completeFile() + "InputSource=" + std::string(kLongestInputSource + 1, 'x') + "\n";
    writeFile(edited);
    console.str("");
    EXPECT_EQ(open(file)->stringForKey(PreferenceKey::InputSource), "");
    EXPECT_EQ(lineCount(), 1) << console.str(); // told once, at start-up
    EXPECT_NE(console.str().find("InputSource=" + std::string(40, 'x') + "... is not usable (text of at most 255 bytes"),
              std::string::npos)
        << console.str();
    EXPECT_EQ(contents(), edited);
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
    writeFile(completeFile() + "Padding=" + std::string(1 << 19, 'x') + "\n");
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

// Two windows on one file, and the user's editor: each change is merged into
// the file as it is on disk, and each store takes in the others' changes.

TEST_F(PreferenceFile, TwoInstancesChangingDifferentKeysLoseNeither)
{
    auto first = openWatched(file);
    CommonUtils::setDefaultPreferences(*first);
    auto second = openWatched(file);
    first->setBool(false, PreferenceKey::GreenOverlay);
    second->setBool(true, PreferenceKey::ContinuousDisplay);
    // Each counts a launch from the count it last read, as the review prompt does.
    for (int round = 0; round < 10; ++round) {
        PreferenceStore& store = round % 2 ? *second : *first;
        ASSERT_TRUE(watchFires(store));
        store.takeOutsideChanges();
        store.setInteger(store.integerForKey("LaunchCount") + 1, "LaunchCount");
        if (round % 2)
            store.setInteger(400 + round, PreferenceKey::A4);
        else
            store.setDouble(5 + round, PreferenceKey::Latency);
    }
    auto later = open(file);
    EXPECT_FALSE(later->boolForKey(PreferenceKey::GreenOverlay));
    EXPECT_TRUE(later->boolForKey(PreferenceKey::ContinuousDisplay));
    EXPECT_EQ(later->integerForKey("LaunchCount"), 10);
    EXPECT_EQ(later->integerForKey(PreferenceKey::A4), 409);
    EXPECT_EQ(later->doubleForKey(PreferenceKey::Latency), 13);
    EXPECT_EQ(first->integerForKey(PreferenceKey::A4), 407); // not yet told of the last change
    ASSERT_TRUE(watchFires(*first));
    EXPECT_EQ(first->takeOutsideChanges(), (std::vector<std::string>{"A4", "LaunchCount"}));
    EXPECT_EQ(first->integerForKey(PreferenceKey::A4), 409);
    EXPECT_TRUE(console.str().empty()) << console.str();
}

TEST_F(PreferenceFile, AnEditByHandReachesTheRunningTunerAndSurvivesItsNextChange)
{
    auto store = openWatched(file);
    CommonUtils::setDefaultPreferences(*store);
    NotificationCenter notifications;
    std::vector<std::string> posted;
    for (const auto name : {Notification::UpdateUI, Notification::UpdateIdentifiers})
        notifications.addObserver(name, [&posted, name](const void*) { posted.emplace_back(name); });

    std::string edited = "; tuned for the choir\n" + contents() + "[Mine]\nkept=yes\n";
    edited.replace(edited.find("A4=440"), 6, "A4=442");
    writeFile(edited); // in place, as many editors save
    ASSERT_TRUE(watchFires(*store));
    applyOutsideChanges(*store, notifications);
    EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 442);
    EXPECT_TRUE(posted.empty()); // the readers of A4 read it when they need it

    store->setBool(false, PreferenceKey::GreenOverlay);
    std::string expected = edited;
    expected.replace(expected.find("GreenOverlay=true"), 17, "GreenOverlay=false");
    EXPECT_EQ(contents(), expected);

    // Keys the main screen lays itself out by, and the accepted sounds, are
    // told as the settings screens tell them; a key removed reads as its default.
    expected.replace(expected.find("PianoView=false"), 15, "PianoView=true");
    expected.replace(expected.find("Sounds_Guitar=true\n"), 19, "");
    expected.replace(expected.find("Sounds_Voice=false"), 18, "sounds_voice=TRUE");
    writeFile(expected);
    ASSERT_TRUE(watchFires(*store));
    applyOutsideChanges(*store, notifications);
    EXPECT_EQ(posted, (std::vector<std::string>{std::string(Notification::UpdateUI), std::string(Notification::UpdateIdentifiers)}));
    EXPECT_TRUE(store->boolForKey(PreferenceKey::PianoView));
    EXPECT_TRUE(store->boolForKey(PreferenceKey::SoundsGuitar));
    EXPECT_TRUE(store->boolForKey(PreferenceKey::SoundsVoice));
    EXPECT_TRUE(console.str().empty()) << console.str();
}

// Whatever sits where the file should be, the tuner starts at once, on
// defaults, says so in one line and never writes over it.
TEST_F(PreferenceFile, OnlyAnOrdinaryFileOfSaneSizeIsRead)
{
    const struct {
        const char* name;
        std::function<void(const std::filesystem::path&)> make;
        const char* problem;
    } cases[] = {
        {"a folder", [](const auto& path) { std::filesystem::create_directory(path); }, "it is a folder"},
        {"a pipe", [](const auto& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }, "it is not a regular file"},
        {"a link to an endless device", [](const auto& path) { std::filesystem::create_symlink("/dev/zero", path); },
         "it is not a regular file"},
        {"a 100 MB file", [](const auto& path) { std::ofstream(path) << "[General]\n"; std::filesystem::resize_file(path, 100 << 20); },
         "it is larger than 1 MiB"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::filesystem::remove_all(file);
        c.make(file);
        const auto before = std::filesystem::symlink_status(file).type();
        console.str("");
        {
            auto store = open(file);
            CommonUtils::setDefaultPreferences(*store);
            store->setInteger(442, PreferenceKey::A4);
            EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 442);
        }
        EXPECT_EQ(std::filesystem::symlink_status(file).type(), before);
        if (before == std::filesystem::file_type::regular) {
            EXPECT_EQ(std::filesystem::file_size(file), 100u << 20);
        }
        EXPECT_EQ(lineCount(), 1) << console.str();
        EXPECT_NE(console.str().find(std::string("is not usable (") + c.problem + "); running on defaults"), std::string::npos)
            << console.str();
        EXPECT_EQ(names(), std::vector<std::string>{"veltra.ini"});
    }
}

TEST_F(PreferenceFile, AFileThatTurnsUnusableWhileRunningIsLeftAloneAndChangesStillApply)
{
    auto store = open(file);
    CommonUtils::setDefaultPreferences(*store);
    std::filesystem::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    store->setInteger(442, PreferenceKey::A4);
    store->setBool(false, PreferenceKey::GreenOverlay);
    EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 442);
    EXPECT_FALSE(store->boolForKey(PreferenceKey::GreenOverlay));
    EXPECT_TRUE(store->boolForKey(PreferenceKey::SharpsOnly)); // what was read before stays
    EXPECT_TRUE(std::filesystem::is_fifo(file));
    EXPECT_EQ(lineCount(), 1) << console.str();
    EXPECT_NE(console.str().find("(it is not a regular file); keeping the settings read before"), std::string::npos);

    // Once it is a file again, the changes held in memory reach it.
    std::filesystem::remove(file);
    store->setBool(true, PreferenceKey::ClockEnabled);
    auto later = open(file);
    EXPECT_EQ(later->integerForKey(PreferenceKey::A4), 442);
    EXPECT_FALSE(later->boolForKey(PreferenceKey::GreenOverlay));
    EXPECT_TRUE(later->boolForKey(PreferenceKey::ClockEnabled));
}

// A preference file kept elsewhere (a dotfiles repository) stays where the
// user keeps it, with its mode.
TEST_F(PreferenceFile, ChangesReachTheFileALinkLeadsTo)
{
    const auto dotfiles = dir / "dotfiles" / "veltra.ini";
    std::filesystem::create_directories(dotfiles.parent_path());
    for (const bool symbolic : {true, false}) {
        SCOPED_TRACE(symbolic ? "a symbolic link" : "a hard link");
        std::filesystem::remove(file);
        std::ofstream(dotfiles, std::ios::binary) << completeFile() << "; mine\n";
        std::filesystem::permissions(dotfiles, std::filesystem::perms(0640));
        if (symbolic)
            std::filesystem::create_symlink("dotfiles/veltra.ini", file);
        else
            std::filesystem::create_hard_link(dotfiles, file);
        auto store = openWatched(file);
        store->setInteger(442, PreferenceKey::A4);
        EXPECT_EQ(std::filesystem::is_symlink(file), symbolic);
        EXPECT_TRUE(std::filesystem::equivalent(file, dotfiles));
        EXPECT_NE(textOf(dotfiles).find("A4=442\n"), std::string::npos);
        EXPECT_NE(textOf(dotfiles).find("; mine\n"), std::string::npos);
        EXPECT_EQ(std::filesystem::status(dotfiles).permissions(), std::filesystem::perms(0640));
        EXPECT_EQ(names(), (std::vector<std::string>{"dotfiles", "veltra.ini"}));
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dotfiles.parent_path()), {}), 1);

        // An edit of the file itself, through its own name, reaches the store.
        std::string edited = textOf(dotfiles);
        edited.replace(edited.find("A4=442"), 6, "A4=415");
        std::ofstream(dotfiles, std::ios::binary) << edited;
        ASSERT_TRUE(watchFires(*store));
        EXPECT_EQ(store->takeOutsideChanges(), std::vector<std::string>{"A4"});
        EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 415);
    }
    EXPECT_TRUE(console.str().empty()) << console.str();
}

// A save killed half-way leaves its temporary; the next start removes
// those no save can still be writing, and nothing else.
TEST_F(PreferenceFile, TemporariesOfKilledSavesAreRemovedAtTheNextStart)
{
    writeFile(completeFile() + "Padding=" + std::string(1 << 19, 'x') + "\n");
    std::mt19937 random(3);
    for (int kill = 0; kill < 5; ++kill) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            std::ostringstream childConsole;
            auto store = IniPreferenceStore::open(file, childConsole);
            for (std::int64_t a4 = 400;; a4 = a4 == 499 ? 400 : a4 + 1)
                store->setInteger(a4, PreferenceKey::A4);
        }
        ::usleep(20000 + random() % 50000);
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    // What a kill left, and one planted to be sure, made old enough.
    std::ofstream(dir / "veltra.ini.q1W2e3") << "half a save";
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(2);
    for (const std::string& name : names())
        std::filesystem::last_write_time(dir / name, old);
    std::ofstream(dir / "veltra.ini.R4t5Y6") << "a save under way";
    std::ofstream(dir / "veltra.ini.backup") << "the user's own";
    std::ofstream(dir / "other.ini.a1b2c3") << "another program's";

    auto store = open(file);
    EXPECT_GE(store->integerForKey(PreferenceKey::A4), 400);
    EXPECT_EQ(names(), (std::vector<std::string>{"other.ini.a1b2c3", "veltra.ini", "veltra.ini.R4t5Y6", "veltra.ini.backup"}));
}

// Files as other editors and systems write them: a byte-order mark, names in
// another case, Windows line ends. They read as meant and keep their shape.
TEST_F(PreferenceFile, FilesInOtherEditorsShapesReadAndKeepTheirShape)
{
    const std::string before = "\xEF\xBB\xBF; mine\r\n[general]\r\na4 = 442\r\ngreenoverlay=false\r\n";
    writeFile(before);
    auto store = open(file);
    CommonUtils::setDefaultPreferences(*store);
    EXPECT_EQ(store->integerForKey(PreferenceKey::A4), 442);
    EXPECT_FALSE(store->boolForKey(PreferenceKey::GreenOverlay));
    store->setInteger(415, PreferenceKey::A4);
    const std::string after = contents();
    EXPECT_EQ(after.rfind("\xEF\xBB\xBF; mine\r\n[general]\r\na4 = 415\r\ngreenoverlay=false\r\n", 0), 0u) << after;
    EXPECT_EQ(std::count(after.begin(), after.end(), '\n'), std::count(after.begin(), after.end(), '\r'))
        << "every line ends in CR LF: " << after;
    EXPECT_EQ(after.find("[General]"), std::string::npos);
    EXPECT_EQ(after.find("A4="), std::string::npos);
    EXPECT_EQ(after.find("GreenOverlay="), std::string::npos);
    EXPECT_TRUE(console.str().empty()) << console.str();
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
