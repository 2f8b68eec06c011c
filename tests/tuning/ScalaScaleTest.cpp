#include "tuning/ScalaScale.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace veltra {
namespace {

const char* const kTwelve = " 100.0\n 200.0\n 300.0\n 400.0\n 500.0\n 600.0\n 700.0\n 800.0\n 900.0\n 1000.0\n 1100.0\n";

std::string refusal(std::string_view text)
{
    const auto result = parseScala(text);
    if (const auto* why = std::get_if<std::string>(&result))
        return *why;
    return "accepted";
}

// What Scala files hold: comments anywhere, an empty description, ratios,
// whole numbers as ratios over 1, cents with nothing after the point, text
// after a pitch, CR LF line ends, and blank lines.
TEST(ScalaScaleTest, ReadsTheFormatsScalaFilesUse)
{
    const std::string text = "! a comment\r\n"
                             "\r\n"
                             "12 notes: the count may be followed by words\r\n"
                             "! between\r\n"
                             "16/15 semitone\r\n9/8\r\n6/5\r\n5/4\r\n4/3\r\n45/32\r\n\r\n3/2\r\n8/5\r\n5/3\r\n9/5\r\n"
                             "1088.27 ! rounded\r\n2 octave\r\n";
    const auto result = parseScala(text);
    ASSERT_TRUE(std::holds_alternative<ScalaScale>(result)) << std::get<std::string>(result);
    const ScalaScale& scale = std::get<ScalaScale>(result);
    EXPECT_EQ(scale.description, "");
    EXPECT_NEAR(scale.cents[0], 0.0, 1e-12);
    EXPECT_NEAR(scale.cents[1], 11.731, 0.001);
    EXPECT_NEAR(scale.cents[7], 1.955, 0.001);
    EXPECT_NEAR(scale.cents[11], -11.73, 1e-9);

    const auto described = parseScala(std::string("Equal\n12\n") + kTwelve + "1200.\n");
    ASSERT_TRUE(std::holds_alternative<ScalaScale>(described));
    EXPECT_EQ(std::get<ScalaScale>(described).description, "Equal");
    EXPECT_EQ(std::get<ScalaScale>(described).cents, CentsTable{});
}

// Anything but a twelve-note scale repeating at the octave with rising
// pitches is refused in one line that says where and why.
TEST(ScalaScaleTest, RefusesWhatIsNotATwelveNoteOctaveScale)
{
    const std::string head = "x\n12\n";
    const std::pair<std::string, std::string> cases[] = {
        {"", "no number of notes: not a Scala file"},
        {"x\n", "no number of notes: not a Scala file"},
        {"x\ntwelve\n", "line 2: 'twelve' is not a number of notes"},
        {"x\n7\n9/8\n5/4\n4/3\n3/2\n5/3\n15/8\n2/1\n", "a scale of 7 notes; the tuner takes scales of 12"},
        {"x\n-12\n", "line 2: '-12' is not a number of notes"},
        {head + kTwelve + "3/1\n", "line 14: the scale repeats at '3/1', not at the octave (2/1 or 1200.0)"},
        {head + kTwelve + "1200.5\n", "line 14: the scale repeats at '1200.5', not at the octave (2/1 or 1200.0)"},
        {head + "100.0\n", "ends after 1 of the 12 pitches (line 3)"},
        {head, "ends after 0 of the 12 pitches"},
        {head + "abc\n", "line 3: 'abc' is neither a ratio (3/2) nor cents (701.955)"},
        {head + "3/\n", "line 3: '3/' is neither a ratio (3/2) nor cents (701.955)"},
        {head + "-3/2\n", "line 3: '-3/2' is neither a ratio (3/2) nor cents (701.955)"},
        {head + "0/2\n", "line 3: '0/2' is not a ratio above zero"},
        {head + "3/0\n", "line 3: '3/0' is not a ratio above zero"},
        {head + "99999999999999999999999/2\n", "line 3: '99999999999999999999999/...' is neither a ratio (3/2) nor "
                                               "cents (701.955)"},
        {head + "1.2.3\n", "line 3: '1.2.3' is not a number of cents"},
        {head + "1e999.\n", "line 3: '1e999.' is not a number of cents"},
        {head + "200.0\n100.0\n", "line 4: the pitches must rise from the tonic to the octave"},
        {head + "-5.0\n", "line 3: the pitches must rise from the tonic to the octave"},
        {head + "1250.0\n", "line 3: the pitches must rise from the tonic to the octave"},
        {head + kTwelve + "2/1\n3/1\n", "line 15: more pitches than the 12 the file announces"},
        {head + "\x01\xff\n", "line 3: '\?\?' is neither a ratio (3/2) nor cents (701.955)"},
    };
    for (const auto& [text, why] : cases)
        EXPECT_EQ(refusal(text), why) << testing::PrintToString(text);
}

// A folder of its own for the files one test writes.
struct ScratchFolder {
    ScratchFolder() { std::filesystem::create_directories(path()); }
    ~ScratchFolder() { std::filesystem::remove_all(path()); }
    std::filesystem::path path() const
    {
        return std::filesystem::temp_directory_path() / ("veltra-scala-" + std::to_string(::getpid()));
    }
};

TEST(ScalaScaleTest, AFileIsReadOrRefusedWithItsName)
{
    ScratchFolder dir;
    const auto path = dir.path() / "just.scl";
    std::ofstream(path) << "Just\n12\n16/15\n9/8\n6/5\n5/4\n4/3\n45/32\n3/2\n8/5\n5/3\n9/5\n15/8\n2/1\n";
    const auto scale = readScalaFile(path);
    ASSERT_TRUE(std::holds_alternative<ScalaScale>(scale));
    EXPECT_EQ(std::get<ScalaScale>(scale).description, "Just");

    std::ofstream(dir.path() / "five.scl") << "Five\n5\n";
    const std::pair<std::filesystem::path, std::string> refused[] = {
        {dir.path() / "five.scl", (dir.path() / "five.scl").string() + ": a scale of 5 notes; the tuner takes scales of 12"},
        {dir.path() / "none.scl", (dir.path() / "none.scl").string() + ": no such file"},
        {dir.path(), dir.path().string() + ": not an ordinary file"},
    };
    for (const auto& [file, why] : refused)
        EXPECT_EQ(std::get<std::string>(readScalaFile(file)), why);
}

} // namespace
} // namespace veltra
