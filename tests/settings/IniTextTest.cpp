#include "settings/IniText.h"

#include <gtest/gtest.h>

namespace veltra {
namespace {

TEST(IniText, SettingAKeyChangesOnlyItsValueOrAddsOneLine)
{
    const struct {
        const char* name;
        std::string before;
        std::string after; // once A4 is set to 442
    } cases[] = {
        {"replaced in place", "[General]\nA4=440\nLatency=10\n", "[General]\nA4=442\nLatency=10\n"},
        {"spacing and line ends kept", "[General]\r\nA4 = 440 \r\n", "[General]\r\nA4 = 442 \r\n"},
        {"an empty value", "[General]\nA4=\n", "[General]\nA4=442\n"},
        {"the last of two", "[General]\nA4=1\nA4=2\n", "[General]\nA4=1\nA4=442\n"},
        {"added at the section's end", "[General]\nLatency=10\n\n[Other]\nA4=1\n",
         "[General]\nLatency=10\nA4=442\n\n[Other]\nA4=1\n"},
        {"lines before any section are General", "Latency=10\n[Other]\n", "Latency=10\nA4=442\n[Other]\n"},
        {"no last line end", "[General]\nLatency=10", "[General]\nLatency=10\nA4=442\n"},
        {"comments are not keys", "[General]\n;A4=1\n#A4=1\n", "[General]\n;A4=1\n#A4=1\nA4=442\n"},
        {"an empty file", "", "[General]\nA4=442\n"},
        {"only other sections", "[Other]\nA4=1\n", "[General]\nA4=442\n\n[Other]\nA4=1\n"},
        {"a later [General] section", "[Other]\nx=1\n[General]\nB=2\n", "[Other]\nx=1\n[General]\nB=2\nA4=442\n"},
        {"a byte-order mark before the section", "\xEF\xBB\xBF[General]\nA4=440\n", "\xEF\xBB\xBF[General]\nA4=442\n"},
        {"a byte-order mark before the first key", "\xEF\xBB\xBF" "A4=440\n", "\xEF\xBB\xBF" "A4=442\n"},
        {"a byte-order mark alone", "\xEF\xBB\xBF", "\xEF\xBB\xBF[General]\nA4=442\n"},
        {"names in another case", "[general]\na4=440\n", "[general]\na4=442\n"},
        {"a lower-case section takes the new key", "[GENERAL]\nLatency=10\n", "[GENERAL]\nLatency=10\nA4=442\n"},
        {"Windows line ends for a new line", "[General]\r\nLatency=10\r\n", "[General]\r\nLatency=10\r\nA4=442\r\n"},
        {"Windows line ends for a new section", "[Other]\r\nx=1\r\n", "[General]\r\nA4=442\r\n\r\n[Other]\r\nx=1\r\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        IniText ini(c.before);
        ini.set("A4", "442");
        EXPECT_EQ(ini.text(), c.after);
        EXPECT_EQ(ini.value("A4"), "442");
    }
}

TEST(IniText, ValuesAreReadFromTheGeneralSectionOnly)
{
    const IniText ini("Latency = 12 \r\n[Other]\nA4=1\n[General]\nGreenOverlay=\n");
    EXPECT_EQ(ini.value("Latency"), "12");
    EXPECT_EQ(ini.value("GreenOverlay"), "");
    EXPECT_EQ(ini.value("A4"), std::nullopt);
    EXPECT_EQ(ini.value("Other/A4"), std::nullopt);
}

TEST(IniText, EntriesAreTheLastValueOfEachKeyWhateverItsCase)
{
    const IniText ini("\xEF\xBB\xBF" "A4=1\r\na4 = 2\n[Other]\nB=3\n[GENERAL]\nLatency = 5\n; C=4\n");
    const std::map<std::string, IniText::Entry, std::less<>> expected{{"a4", {"a4", "2"}}, {"latency", {"Latency", "5"}}};
    EXPECT_EQ(ini.entries(), expected);
    EXPECT_EQ(ini.value("A4"), "2");
    EXPECT_EQ(ini.value("LATENCY"), "5");
}

TEST(IniText, OnlyPlainSettingTextIsOurs)
{
    const struct {
        std::string text;
        std::string problem;
    } cases[] = {
        {"", ""},
        {"[General]\r\nA4=440\r\n; note\n# note\n\n  \nName=Æøå ✓\n", ""},
        {"\xEF\xBB\xBF[General]\nA4=440\n", ""},
        {"[General]\n\xEF\xBB\xBF[Other]\n", "line 2 is not a setting"}, // a mark is a file's first bytes only
        {std::string("A4=440\n\0", 8), "it is not a text file"},
        {"A4=\xff\n", "it is not a text file"},
        {"A4=\xc0\xaf\n", "it is not a text file"},     // an overlong '/'
        {"A4=\xed\xa0\x80\n", "it is not a text file"}, // a surrogate
        {"A4=\xe2\x82\n", "it is not a text file"},     // cut short
        {"[General]\nA4=440\nthis line is no setting\n", "line 3 is not a setting"},
        {"[General\n", "line 1 is not a setting"},
        {"[a]b]\n", "line 1 is not a setting"},
        {"=440\n", "line 1 is not a setting"},
        {"A[4]=440\n", "line 1 is not a setting"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        EXPECT_EQ(problemWithIniText(c.text), c.problem);
    }
}

} // namespace
} // namespace veltra
