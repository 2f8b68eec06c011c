#include "Help.h"
#include "dsp/AudioFile.h"
#include "dsp/Patch.h"
#include "dsp/PatchFile.h"
#include "support/Lines.h"
#include "support/PatchRig.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace veltra::test {
namespace {

struct Result {
    int status;
    std::string out;
    std::string err;
    std::vector<std::string> lines() const { return test::lines(out); }
};

// Runs veltra-cli the way a user does, in a scratch directory.
struct Cli : ::testing::Test {
    std::filesystem::path dir = std::filesystem::temp_directory_path() / ("veltra-cli-" + makeUuidString());

    void SetUp() override { std::filesystem::create_directories(dir); }
    void TearDown() override { std::filesystem::remove_all(dir); }

    Result run(const std::string& arguments)
    {
        const auto errFile = dir / "stderr.txt";
        const std::string command = std::string(VELTRA_CLI) + " " + arguments + " 2>" + errFile.string();
        FILE* pipe = popen(command.c_str(), "r");
        std::string out;
        std::array<char, 4096> buffer;
        for (std::size_t n; (n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
            out.append(buffer.data(), n);
        const int status = pclose(pipe);
        std::ifstream errIn(errFile);
        std::string err((std::istreambuf_iterator<char>(errIn)), {});
        return {WEXITSTATUS(status), out, err};
    }

    std::string wav(const std::string& name, const std::vector<float>& samples, int rate = 48000)
    {
        const auto path = (dir / name).string();
        writeWavFile(path, samples, 1, rate);
        return path;
    }
};

TEST_F(Cli, PatchIsWrittenByteForByte)
{
    const Result r = run("patch");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, CommonUtils::patch);
}

TEST_F(Cli, RawAnalysisReportsEveryFrame)
{
    const Result sine = run("analyze --raw " + wav("a440.wav", test::sine(440, 0.5, 2.0, 48000)));
    ASSERT_EQ(sine.status, 0) << sine.err;
    const auto lines = sine.lines();
    // One reading per 256 samples once the long analyser's window is full.
    EXPECT_NEAR(static_cast<double>(lines.size()), (96000.0 - 4096) / 256, 2);
    int settled = 0;
    for (const auto& line : lines) {
        double t, f;
        ASSERT_EQ(std::sscanf(line.c_str(), "%lf %lf", &t, &f), 2) << line;
        if (t > 0.5) {
            ++settled;
            EXPECT_NEAR(cents(f, 440), 0, 0.1) << line;
        }
    }
    EXPECT_GT(settled, 250);

    const Result quiet = run("analyze --raw --json " + wav("silence.wav", test::silence(1.0, 48000)));
    ASSERT_EQ(quiet.status, 0);
    for (const auto& line : quiet.lines())
        EXPECT_NE(line.find("\"frequency\":0.0000}"), std::string::npos) << line;
}

TEST_F(Cli, ReadoutShowsTheNoteSoonAfterItStartsAndNothingInSilence)
{
    const auto file =
        wav("note.wav", concat(concat(test::silence(0.5, 48000), test::sine(196.0, 0.4, 2.0, 48000)), test::silence(0.5, 48000)));
    const Result r = run("analyze " + file);
    ASSERT_EQ(r.status, 0) << r.err;
    const auto lines = r.lines();
    ASSERT_GE(lines.size(), 2u);
    double t;
    char note[8];
    ASSERT_EQ(std::sscanf(lines[0].c_str(), "%lf %7s", &t, note), 2);
    EXPECT_STREQ(note, "G3");
    EXPECT_GT(t, 0.5);
    EXPECT_LT(t, 0.5 + 0.3);
    // The labels keep the last note through the closing silence.
    EXPECT_TRUE(lines.back().starts_with("summary: G3 shown 2.2")) << lines.back();
    EXPECT_TRUE(lines.back().ends_with("median deviation +0.0%")) << lines.back();

    const Result flats = run("analyze --json --flats --a4 432 " + wav("bflat.wav", test::sine(228.8, 0.4, 1.0, 48000)));
    EXPECT_NE(flats.out.find("\"note\":\"B\",\"sharpFlat\":\"b\",\"octaveNumber\":\"3\""), std::string::npos) << flats.out;
}

TEST_F(Cli, TheClassifierGateKeepsNoiseOffTheReadout)
{
    std::vector<float> noise(48000 * 3);
    std::uint32_t state = 12345;
    for (float& x : noise) {
        state = state * 1664525u + 1013904223u;
        x = 0.3f * (static_cast<float>(state >> 8) / 8388608.0f - 1.0f);
    }
    const Result r = run("analyze --use-ml --sounds guitar,violin,piano,voice " + wav("noise.wav", noise));
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "summary: no note shown\n");
}

TEST_F(Cli, ToneRendersInTheUsersTuning)
{
    const auto out = (dir / "a442.wav").string();
    const Result r = run("tone A --a4 442 --seconds 1 -o " + out);
    ASSERT_EQ(r.status, 0) << r.err;
    const AudioData tone = readAudioFile(out);
    PatchRig rig(static_cast<int>(tone.sampleRate));
    rig.feed(std::vector<float>(tone.samples.begin(), tone.samples.begin() + 36000)); // the held part
    ASSERT_FALSE(rig.readings.empty());
    EXPECT_NEAR(rig.readings.back().frequency, 442.0, 0.01);
}

TEST_F(Cli, BadInputGivesOneLineAndStatus2)
{
    std::ofstream(dir / "text.wav") << "not audio";
    const std::string missing = (dir / "missing.wav").string();
    const struct {
        std::string arguments;
        std::string mentions;
    } cases[] = {
        {"analyze " + missing, "missing.wav: no such file"},
        {"analyze " + (dir / "text.wav").string(), "text.wav: not an audio file"},
        {"analyze " + dir.string(), "is a directory"},
        {"analyze", "one audio file"},
        {"analyze x.wav --a4 500", "--a4 must be a number from 400 to 499"},
        {"tone H -o x.wav", "'H' is not a note name"},
        {"tone A -o " + (dir / "no" / "x.wav").string(), "cannot be written"},
        {"tone A", "needs an output file"},
        {"frobnicate", "unknown command"},
        {"analyze x.wav --loud", "unknown option --loud"},
        {"analyze x.wav --sounds guitar", "--sounds goes with --use-ml"},
        {"analyze x.wav --use-ml --sounds guitar,banjo", "unknown sound category 'banjo'"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const Result r = run(c.arguments);
        EXPECT_EQ(r.status, 2);
        EXPECT_NE(r.err.find(c.mentions), std::string::npos) << r.err;
        EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
        EXPECT_TRUE(r.out.empty());
    }
}

// Every command the help lists answers --help, is reached by the tool, and
// accepts every option its help names: help and parsers cannot drift apart.
TEST_F(Cli, HelpAndParsersAgreeForEveryCommand)
{
    for (const cli::CommandHelp& command : cli::commandHelp()) {
        const std::string name(command.name);
        SCOPED_TRACE(name);
        const Result help = run(name + " --help");
        EXPECT_EQ(help.status, 0) << help.err;
        EXPECT_EQ(help.out.rfind("usage: veltra-cli " + cli::synopsis(command) + "\n", 0), 0u) << help.out;
        for (const std::string& line : lines(help.out))
            EXPECT_LE(line.size(), 79u) << "too wide for a terminal: " << line;

        // The command's own parser is reached: it, not the tool, rejects a stray option.
        const Result stray = run(name + " --not-an-option");
        EXPECT_EQ(stray.status, 2);
        EXPECT_NE(stray.err.find("unknown option --not-an-option"), std::string::npos) << stray.err;

        // Each option is known; the stray one after it keeps the command from doing any work.
        for (const cli::OptionHelp& option : command.options) {
            const std::string arguments =
                name + " " + std::string(option.name) + (option.value.empty() ? "" : " 1") + " --not-an-option";
            const Result r = run(arguments);
            EXPECT_EQ(r.status, 2) << arguments;
            EXPECT_EQ(r.err.find("unknown option " + std::string(option.name)), std::string::npos)
                << arguments << ": " << r.err;
        }
    }
}

TEST_F(Cli, ProgramHelpAndVersion)
{
    const Result help = run("--help");
    EXPECT_EQ(help.status, 0);
    for (const cli::CommandHelp& command : cli::commandHelp())
        EXPECT_NE(help.out.find("\n  " + std::string(command.name) + " "), std::string::npos) << command.name;
    const Result bare = run("");
    EXPECT_EQ(bare.status, 2);
    EXPECT_EQ(bare.err, help.out);
    const Result version = run("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("veltra-cli ", 0), 0u) << version.out;
}

} // namespace
} // namespace veltra::test
