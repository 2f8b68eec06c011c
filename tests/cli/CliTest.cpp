#include "Help.h"
#include "dsp/AudioFile.h"
#include "dsp/Patch.h"
#include "dsp/PatchFile.h"
#include "support/Lines.h"
#include "support/PatchRig.h"
#include "support/Signals.h"

#include <gtest/gtest.h>
#include <sndfile.h>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
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

    // With pipedFile, the program reads that file's bytes from a pipe on its standard input.
    Result run(const std::string& arguments, const std::string& pipedFile = {})
    {
        const auto errFile = dir / "stderr.txt";
        const std::string feed = pipedFile.empty() ? "" : "cat '" + pipedFile + "' | ";
        const std::string command = feed + VELTRA_CLI + " " + arguments + " 2>" + errFile.string();
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

    // A 16-bit WAV written byte by byte, so its header may say anything.
    std::string rawWav(const std::string& name, const std::vector<float>& samples, std::uint32_t rate)
    {
        std::string data;
        for (const float x : samples) {
            const auto v = static_cast<std::int16_t>(x * 20000);
            data.append(reinterpret_cast<const char*>(&v), 2);
        }
        const auto u32 = [](std::uint32_t v) { return std::string(reinterpret_cast<const char*>(&v), 4); };
        const auto u16 = [](std::uint16_t v) { return std::string(reinterpret_cast<const char*>(&v), 2); };
        const std::string fmt = u16(1) + u16(1) + u32(rate) + u32(rate * 2) + u16(2) + u16(16);
        const std::string body = "WAVEfmt " + u32(16) + fmt + "data" + u32(static_cast<std::uint32_t>(data.size())) + data;
        const auto path = (dir / name).string();
        std::ofstream(path, std::ios::binary) << "RIFF" << u32(static_cast<std::uint32_t>(body.size())) << body;
        return path;
    }

    std::string read(const std::filesystem::path& path)
    {
        std::ifstream in(path, std::ios::binary);
        return std::string((std::istreambuf_iterator<char>(in)), {});
    }

    // Mono at 48 kHz in any of libsndfile's formats.
    std::string encoded(const std::string& name, int format, const std::vector<float>& samples)
    {
        const auto path = (dir / name).string();
        SF_INFO info{};
        info.samplerate = 48000;
        info.channels = 1;
        info.format = format;
        SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
        EXPECT_NE(file, nullptr) << name << ": " << sf_strerror(nullptr);
        sf_writef_float(file, samples.data(), static_cast<sf_count_t>(samples.size()));
        sf_close(file);
        return path;
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
    EXPECT_TRUE(lines.back().starts_with("summary: G3 sounded")) << lines.back();
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

// The labels keep a note through the silence after it; the summary tells
// that hold apart from the time the note sounded.
TEST_F(Cli, TheSummaryTellsHowLongTheNoteSoundedApartFromTheHold)
{
    const auto file = wav("held.wav", concat(test::sine(440, 0.4, 3.15, 48000), test::silence(2.7, 48000)));
    const Result text = run("analyze " + file);
    ASSERT_EQ(text.status, 0) << text.err;
    double sounded = 0, shown = 0, median = 1;
    ASSERT_EQ(std::sscanf(text.lines().back().c_str(), "summary: A4 sounded %lf s, shown %lf s, median deviation %lf%%",
                          &sounded, &shown, &median),
              3)
        << text.out;
    EXPECT_NEAR(sounded, 3.15, 0.1);
    EXPECT_GT(shown, 3.15 + 2.7 - 0.5);
    EXPECT_EQ(median, 0.0);

    const Result json = run("analyze --json " + file);
    char expected[96];
    std::snprintf(expected, sizeof expected, "{\"summary\":{\"note\":\"A4\",\"seconds\":%.3f,\"shownSeconds\":%.3f,",
                  sounded, shown);
    EXPECT_TRUE(json.lines().back().starts_with(expected)) << json.lines().back();
}

// A note in scientific pitch notation, in any case, with any of the signs,
// anywhere from the lowest note the tuner reads to the highest, is the
// tone the patch then hears.
TEST_F(Cli, ToneRendersTheNamedNoteInTheUsersTuning)
{
    const struct {
        std::string arguments;
        double hertz;
    } cases[] = {
        {"A --a4 442", 442.0},
        {"A4", 440.0},
        {"c#", 277.183},
        {"C#2", 69.296},
        {"Bb1", 58.270},
        {"bb1 --a4 499", 66.084},
        {"E --octave 2", 82.407},
        {"a --octave 3", 220.0},
        {"F\u266F3", 184.997},
        {"e\u266D", 311.127},
        {"Cb4", 246.942},
        {"B#3", 261.626},
        {"B8", 7902.133},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments);
        const auto out = (dir / "tone.wav").string();
        const Result r = run("tone " + c.arguments + " --seconds 1 -o " + out);
        ASSERT_EQ(r.status, 0) << r.err;
        const AudioData tone = readAudioFile(out);
        PatchRig rig(static_cast<int>(tone.sampleRate));
        rig.feed(std::vector<float>(tone.samples.begin(), tone.samples.begin() + 36000)); // the held part
        ASSERT_FALSE(rig.readings.empty());
        EXPECT_NEAR(cents(rig.readings.back().frequency, c.hertz), 0, 2);
    }
}

// A tone file opens in every reader without a complaint: the plain PCM
// header, whose format chunk needs no extension, sized to what follows.
TEST_F(Cli, ToneIsAPlainPcmWav)
{
    const Result r = run("tone A4 --seconds 0.5 -o -");
    ASSERT_EQ(r.status, 0) << r.err;
    const std::string& wav = r.out;
    const auto u32 = [&](std::size_t at) {
        std::uint32_t v = 0;
        std::memcpy(&v, wav.data() + at, 4);
        return v;
    };
    const auto u16 = [&](std::size_t at) {
        std::uint16_t v = 0;
        std::memcpy(&v, wav.data() + at, 2);
        return v;
    };
    ASSERT_GE(wav.size(), 44u);
    EXPECT_EQ(wav.substr(0, 4), "RIFF");
    EXPECT_EQ(u32(4), wav.size() - 8);
    EXPECT_EQ(wav.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(u32(16), 16u);        // no extension follows the format
    EXPECT_EQ(u16(20), 1);          // so the format is PCM, the one that needs none
    EXPECT_EQ(u16(22), 2);          // channels
    EXPECT_EQ(u32(24), 48000u);     // frames a second
    EXPECT_EQ(u32(28), 48000u * 4); // bytes a second
    EXPECT_EQ(u16(32), 4);          // bytes a frame
    EXPECT_EQ(u16(34), 16);         // bits a sample
    EXPECT_EQ(wav.substr(36, 4), "data");
    EXPECT_EQ(u32(40), wav.size() - 44);
    EXPECT_EQ(u32(40) % 4, 0u);
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
        {"tone A## -o x.wav", "'A##' is not a note name"},
        {"tone A-1 -o x.wav", "'A-1' is not a note name"},
        {"tone A1 -o x.wav", "'A1' is outside the tuner's range, Bb1 to B8"},
        {"tone C9 -o x.wav", "'C9' is outside the tuner's range"},
        {"tone C --octave 1 -o x.wav", "'C1' is outside the tuner's range"},
        {"tone A4 --octave 3 -o x.wav", "'A4' names its octave already"},
        {"tone A --octave 9 -o x.wav", "--octave must be a number from 1 to 8"},
        {"tone A --octave 3.5 -o x.wav", "--octave must be a whole number"},
        {"tone A -o " + (dir / "no" / "x.wav").string(), "cannot be written"},
        {"tone A", "needs an output file"},
        {"tone A -o ''", "-o needs a value"},
        {"report x.wav -o ''", "-o needs a value"},
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

// "-" is standard input, piped or redirected from a file, for every
// command that reads audio: what it holds is read as the file would be.
// A pipe is read only forward, which FLAC cannot be; it is refused in one
// line, while the same FLAC redirected from a file is read.
TEST_F(Cli, StandardInputIsReadAsTheFileWould)
{
    const std::vector<float> tone = test::sine(440, 0.5, 1.0, 48000);
    const struct {
        std::string file;
        bool pipeRefused;
    } formats[] = {
        {encoded("a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, tone), false},
        {encoded("a.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, tone), false},
        {encoded("a.au", SF_FORMAT_AU | SF_FORMAT_PCM_16, tone), false},
        {encoded("a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, tone), false},
        {encoded("a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, tone), true},
    };
    const struct {
        std::string command;
        bool namesItsInput;
    } commands[] = {{"analyze", false}, {"analyze --raw", false}, {"classify", false}, {"report --json", true}};
    for (const auto& f : formats) {
        for (const auto& c : commands) {
            SCOPED_TRACE(c.command + " of " + f.file);
            const Result named = run(c.command + " " + f.file);
            ASSERT_EQ(named.status, 0) << named.err;
            const Result redirected = run(c.command + " - <" + f.file);
            EXPECT_EQ(redirected.status, 0) << redirected.err;
            if (!c.namesItsInput) {
                EXPECT_EQ(redirected.out, named.out);
            }
            const Result piped = run(c.command + " -", f.file);
            EXPECT_EQ(piped.status, f.pipeRefused ? 2 : 0) << piped.err;
            if (f.pipeRefused) {
                EXPECT_TRUE(piped.err.ends_with(": -: FLAC cannot be read from a pipe; give it as a file\n")) << piped.err;
                EXPECT_EQ(std::count(piped.err.begin(), piped.err.end(), '\n'), 1) << piped.err;
                EXPECT_TRUE(piped.out.empty());
                continue;
            }
            EXPECT_EQ(piped.out, redirected.out);
            EXPECT_EQ(piped.err, "");
        }
    }
}

// A recording cut off (a copy stopped half-way, a crash while recording)
// still has its header's length: the tool says how much it read, after
// printing what it heard, and the status tells the file was not whole.
TEST_F(Cli, ARecordingShorterThanItsHeaderSaysIsTold)
{
    const std::string path = wav("cut.wav", test::sine(440.0, 0.3, 2.0, 48000));
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 48000 * 4); // its last second of floats
    for (const std::string options : {"", "--raw "}) {
        SCOPED_TRACE(options);
        const Result r = run("analyze " + options + path);
        EXPECT_EQ(r.status, 2);
        EXPECT_EQ(r.err, "veltra-cli: " + path + ": ends after 1.0 s of the 2.0 s its header declares\n");
        EXPECT_FALSE(r.out.empty());
    }
    const Result whole = run("analyze " + wav("whole.wav", test::sine(440.0, 0.3, 2.0, 48000)));
    EXPECT_EQ(whole.status, 0) << whole.err;
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

// A file's sample rate, channels and length are checked before the patch
// hears it: one the patch cannot take is converted, an absurd one refused,
// by every command that reads audio.
TEST_F(Cli, EveryCommandChecksTheSampleRateBeforeThePatchHearsIt)
{
    const struct {
        std::uint32_t rate;
        bool refused;
    } files[] = {{1, true}, {2, true}, {999, true}, {16800000, true}, {4000, false}, {384000, false}};
    const char* commands[] = {"analyze", "analyze --raw", "analyze --use-ml", "report --json", "classify"};
    for (const auto& f : files) {
        // A few thousand samples, or a second at a rate that can be played.
        const double seconds = f.refused ? 4000.0 / f.rate : 1.0;
        const std::string path =
            rawWav("rate" + std::to_string(f.rate) + ".wav", test::sine(220, 0.5, seconds, f.rate), f.rate);
        for (const char* command : commands) {
            SCOPED_TRACE(std::string(command) + " at " + std::to_string(f.rate) + " Hz");
            const Result r = run(std::string(command) + " " + path);
            EXPECT_EQ(r.status, f.refused ? 2 : 0) << r.err;
            EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), f.refused ? 1 : 0) << r.err;
            if (f.refused) {
                EXPECT_NE(r.err.find("sample rate of " + std::to_string(f.rate) + " Hz"), std::string::npos) << r.err;
            }
        }
    }
    // A converted file is heard at its true pitch.
    const Result low = run("analyze " + (dir / "rate4000.wav").string());
    EXPECT_NE(low.out.find("summary: A3"), std::string::npos) << low.out;
}

// Samples far beyond full scale, and names no terminal or JSON reader can
// take, still give well-formed output and one-line errors.
TEST_F(Cli, OutputStaysWellFormedWhateverTheInput)
{
    std::vector<float> huge = test::sine(440, 1e30, 2.0, 48000);
    const std::string loud = wav("loud\xff\xfe.wav", huge);
    for (const char* command : {"analyze", "analyze --json", "analyze --raw", "classify", "report --json"}) {
        SCOPED_TRACE(command);
        const Result r = run(std::string(command) + " '" + loud + "'");
        EXPECT_EQ(r.status, 0) << r.err;
        EXPECT_EQ(r.out.find("nan"), std::string::npos);
        EXPECT_EQ(r.out.find("inf"), std::string::npos);
        EXPECT_EQ(r.out.find_first_of("\xff\xfe"), std::string::npos) << "the name's raw bytes, which are no UTF-8";
    }
    const Result json = run("report --json '" + loud + "'");
    EXPECT_NE(json.out.find("\"file\": \"loud\xEF\xBF\xBD\xEF\xBF\xBD.wav\""), std::string::npos) << json.out;

    // A newline in a file name is shown escaped: the error stays one line.
    const Result named = run("analyze '" + (dir / "two\nlines.wav").string() + "'");
    EXPECT_EQ(named.status, 2);
    EXPECT_NE(named.err.find("two\\nlines.wav: no such file"), std::string::npos) << named.err;
    EXPECT_EQ(std::count(named.err.begin(), named.err.end(), '\n'), 1) << named.err;

    // A damaged MP3 file: libmpg123's notes about every bad frame stay unseen.
    std::string frames;
    for (int i = 0; i < 40; ++i)
        frames += std::string("\xFF\xFB\x90\x64", 4) + std::string(413, static_cast<char>(0x5a + i));
    std::ofstream(dir / "damaged.mp3", std::ios::binary) << frames;
    const Result mp3 = run("analyze " + (dir / "damaged.mp3").string());
    EXPECT_LE(std::count(mp3.err.begin(), mp3.err.end(), '\n'), 1) << mp3.err;
    EXPECT_EQ(mp3.err.find("libmpg123"), std::string::npos) << mp3.err;
}

// A model the classifier cannot use, of whatever kind, is one line naming
// it and status 2, for the command that names it and for those that load
// the installed one.
TEST_F(Cli, AModelThatCannotBeUsedIsOneLine)
{
    const std::string audio = wav("a.wav", test::sine(440, 0.5, 1.0, 48000));
    std::ofstream(dir / "empty.bin");
    std::ofstream(dir / "text.bin") << "not a model\n";
    const std::string models[] = {"/dev/zero", dir.string(), (dir / "missing.bin").string(),
                                  (dir / "empty.bin").string(), (dir / "text.bin").string()};
    for (const std::string& model : models) {
        SCOPED_TRACE(model);
        const Result r = run("classify --model " + model + " " + audio);
        EXPECT_EQ(r.status, 2);
        EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
        EXPECT_NE(r.err.find(model), std::string::npos) << r.err;
        for (const char* internal : {"basic_", "std::", "what()", "exception"})
            EXPECT_EQ(r.err.find(internal), std::string::npos) << r.err;
    }
}

// Standard output that cannot be written is an error, not lost output.
TEST_F(Cli, AFullOrClosedStandardOutputIsAnError)
{
    const std::string audio = wav("a.wav", test::sine(440, 0.5, 1.0, 48000));
    for (const std::string& redirect : {std::string("> /dev/full"), std::string(">&-")}) {
        for (const std::string& command : {"analyze " + audio, "report --json " + audio, std::string("patch")}) {
            SCOPED_TRACE(command + " " + redirect);
            const Result r = run(command + " " + redirect);
            EXPECT_EQ(r.status, 2);
            EXPECT_NE(r.err.find("standard output: cannot be written"), std::string::npos) << r.err;
            EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
        }
    }
}

// Output files, for both commands that write one: the target is replaced
// whole or not at all, and only the target.
TEST_F(Cli, OutputFilesAreReplacedWholeOrNotAtAll)
{
    const std::string audio = wav("a.wav", test::sine(440, 0.5, 1.0, 48000));
    const std::string commands[] = {"report --json " + audio + " -o ", "tone A -o "};
    for (const std::string& command : commands) {
        SCOPED_TRACE(command);
        const auto out = dir / "out";
        std::filesystem::remove_all(out);
        std::filesystem::create_directories(out);

        // The mode stays, and a file of the user's beside it is untouched.
        std::ofstream(out / "kept") << "old";
        ::chmod((out / "kept").c_str(), 0640);
        std::ofstream(out / "kept.partial") << "mine";
        EXPECT_EQ(run(command + (out / "kept").string()).status, 0);
        EXPECT_NE(read(out / "kept"), "old");
        EXPECT_EQ(std::filesystem::status(out / "kept").permissions(), std::filesystem::perms(0640));
        EXPECT_EQ(read(out / "kept.partial"), "mine");

        // A read-only file is refused, even for root.
        std::ofstream(out / "locked") << "old";
        ::chmod((out / "locked").c_str(), 0444);
        const Result locked = run(command + (out / "locked").string());
        EXPECT_EQ(locked.status, 2);
        EXPECT_NE(locked.err.find("locked: is read-only"), std::string::npos) << locked.err;
        EXPECT_EQ(read(out / "locked"), "old");

        // Through a symbolic link to its target; a link to nothing creates it.
        std::ofstream(out / "target") << "old";
        std::filesystem::create_symlink("target", out / "link");
        std::filesystem::create_symlink("new-target", out / "dangling");
        EXPECT_EQ(run(command + (out / "link").string()).status, 0);
        EXPECT_EQ(run(command + (out / "dangling").string()).status, 0);
        EXPECT_TRUE(std::filesystem::is_symlink(out / "link"));
        EXPECT_NE(read(out / "target"), "old");
        EXPECT_EQ(read(out / "new-target").size(), read(out / "target").size());

        // Every hard link sees the new text.
        std::filesystem::create_hard_link(out / "target", out / "other-name");
        std::ofstream(out / "target") << "old";
        EXPECT_EQ(run(command + (out / "target").string()).status, 0);
        EXPECT_NE(read(out / "other-name"), "old");
        EXPECT_TRUE(read(out / "other-name") == read(out / "target"));

        // A device is written into, not replaced; a full one is an error.
        const Result full = run(command + "/dev/full");
        EXPECT_EQ(full.status, 2);
        EXPECT_NE(full.err.find("/dev/full: cannot be written (No space left on device)"), std::string::npos)
            << full.err;
        EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
        const Result null = run(command + "/dev/null");
        EXPECT_EQ(null.status, 0) << null.err;
        EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));

        // "-" is standard output, with nothing else on it (a WAV file's
        // header holds the time it was made, so the sizes are compared).
        const Result dash = run(command + "-");
        EXPECT_EQ(dash.status, 0) << dash.err;
        EXPECT_EQ(dash.out.size(), read(out / "target").size());

        // Nothing but the targets was left behind.
        std::size_t files = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(out))
            ++files;
        EXPECT_EQ(files, 8u);
    }
}

// On a full disk the old file stays whole, under each of its names, and no
// temporary file is left behind. The disk is a 64 KiB tmpfs, where the
// machine lets the test mount one (root, outside a locked-down container).
TEST_F(Cli, AFullDiskLeavesTheOldFileWhole)
{
    const auto small = dir / "small";
    std::filesystem::create_directories(small);
    if (::mount("tmpfs", small.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no tmpfs can be mounted here";
    std::ofstream(small / "take.wav") << "old";
    const Result replaced = run("tone A --seconds 1 -o " + (small / "take.wav").string());
    std::filesystem::create_hard_link(small / "take.wav", small / "other.wav");
    const Result inPlace = run("tone A --seconds 1 -o " + (small / "take.wav").string());
    const std::string take = read(small / "take.wav"), other = read(small / "other.wav");
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(small))
        ++files;
    ::umount(small.c_str());
    for (const Result& r : {replaced, inPlace}) {
        EXPECT_EQ(r.status, 2);
        EXPECT_NE(r.err.find("take.wav: cannot be written (No space left on device)"), std::string::npos) << r.err;
    }
    EXPECT_EQ(take, "old");
    EXPECT_EQ(other, "old");
    EXPECT_EQ(files, 2u);
}

// Stopped while its output is written, by Ctrl+C, a kill or a closed
// terminal, the tool removes the partial file it had begun, keeps the
// user's file as it was, and ends with the status a shell gives the signal.
TEST_F(Cli, ASignalDuringTheOutputLeavesNoPartialFile)
{
    const auto out = dir / "keep.wav";
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        std::ofstream(out) << "the user's own";
        const int watch = inotify_init1(IN_CLOEXEC);
        ASSERT_GE(inotify_add_watch(watch, dir.c_str(), IN_CREATE), 0);
        const std::string command = "exec " + std::string(VELTRA_CLI) + " tone A --seconds 120 -o " + out.string() + " 2>/dev/null";
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
            _exit(127);
        }
        // The temporary file beside keep.wav appears once the tone is made.
        alignas(inotify_event) char events[4096];
        pollfd created{watch, POLLIN, 0};
        ASSERT_EQ(::poll(&created, 1, 120000), 1);
        ASSERT_GT(::read(watch, events, sizeof events), 0);
        ::kill(child, signal);
        int status = 0;
        waitpid(child, &status, 0);
        ::close(watch);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 128 + signal) << status;
        EXPECT_EQ(read(out), "the user's own");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir), {}), 1);
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

// The tuning options reach the readout and the tones: a B flat instrument
// reads concert C4 as written D4 and its written D4 renders concert C4; a
// note at Werckmeister III's E reads in tune there and 1.955 cents sharp of
// equal temperament (the patch reads a sine within a tenth of a cent, and
// the readout cuts to tenths).
TEST_F(Cli, TheTuningOptionsNameWrittenNotesInTheChosenTemperament)
{
    const auto c4 = wav("c4.wav", test::sine(261.63, 0.4, 2.0, 48000));
    const Result bFlat = run("analyze --transpose Bb " + c4);
    ASSERT_EQ(bFlat.status, 0) << bFlat.err;
    EXPECT_TRUE(bFlat.lines().back().starts_with("summary: D4 (concert C4) sounded")) << bFlat.out;

    const auto out = (dir / "d4.wav").string();
    ASSERT_EQ(run("tone D4 --transpose Bb --seconds 1 -o " + out).status, 0);
    const AudioData tone = readAudioFile(out);
    PatchRig rig(static_cast<int>(tone.sampleRate));
    rig.feed(std::vector<float>(tone.samples.begin(), tone.samples.begin() + 36000));
    ASSERT_FALSE(rig.readings.empty());
    EXPECT_NEAR(cents(rig.readings.back().frequency, 261.63), 0, 0.2);

    const auto e = wav("e.wav", test::sine(330.0, 0.4, 2.0, 48000));
    const struct {
        std::string options;
        std::string summary;
    } cases[] = {
        {"", "median deviation +1.9%"},
        {"--temperament werckmeister-iii", "median deviation -0.1%"},
        {"--temperament werckmeister-iii --tonic C", "median deviation -0.1%"},
    };
    for (const auto& c : cases) {
        const Result r = run("analyze " + c.options + " " + e);
        ASSERT_EQ(r.status, 0) << r.err;
        EXPECT_TRUE(r.lines().back().starts_with("summary: E4")) << r.out;
        EXPECT_TRUE(r.lines().back().ends_with(c.summary)) << c.options << ": " << r.out;
    }
}

// A transposing instrument's readings carry the concert note that sounds
// beside the written one, in every form analyze writes; at concert pitch,
// with or without --transpose C, the output has no trace of it.
TEST_F(Cli, ATransposedReadingNamesItsConcertNote)
{
    const auto c4 = wav("c4.wav", test::sine(261.63, 0.4, 2.0, 48000));
    const struct {
        std::string options;
        std::string change; // how each line of a change ends
        std::string summary;
    } cases[] = {
        {"--transpose Bb", "  concert C4", "summary: D4 (concert C4) sounded "},
        {"--transpose Eb", "  concert C4", "summary: A4 (concert C4) sounded "},
        {"--transpose 3", "  concert C4", "summary: A3 (concert C4) sounded "},
        {"--transpose F --flats", "  concert C4", "summary: G4 (concert C4) sounded "},
        {"--json --transpose Bb", ",\"concert\":\"C4\"}", "{\"summary\":{\"note\":\"D4\",\"concert\":\"C4\","},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.options);
        const Result r = run("analyze " + c.options + " " + c4);
        ASSERT_EQ(r.status, 0) << r.err;
        const auto lines = r.lines();
        ASSERT_GE(lines.size(), 2u) << r.out;
        for (std::size_t i = 0; i + 1 < lines.size(); ++i)
            EXPECT_TRUE(lines[i].ends_with(c.change)) << lines[i];
        EXPECT_TRUE(lines.back().starts_with(c.summary)) << lines.back();
    }

    for (const std::string json : {"", "--json "}) {
        const Result concert = run("analyze " + json + c4);
        ASSERT_EQ(concert.status, 0) << concert.err;
        EXPECT_EQ(concert.out.find("concert"), std::string::npos) << concert.out;
        EXPECT_EQ(run("analyze " + json + "--transpose C " + c4).out, concert.out);
    }
}

} // namespace
} // namespace veltra::test
