#include "ClassifyCommand.h"
#include "ReferenceData.h"
#include "dsp/AudioFile.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace veltra {
namespace {

struct CommandRun {
    int status;
    std::string out;
    std::string err;
};

CommandRun run(std::vector<std::string> args)
{
    std::ostringstream out, err;
    const int status = cli::runClassifyCommand(args, out, err);
    return {status, out.str(), err.str()};
}

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        result.push_back(line);
    return result;
}

const std::string kInput = test::classifyData("reference_input.wav").string();

TEST(ClassifyCommandTest, PrintsTimeAndTopLabelsPerWindow)
{
    const CommandRun r = run({kInput, "--top", "2"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    const auto rows = lines(r.out);
    ASSERT_EQ(rows.size(), 2u);
    const std::regex row(R"(\s+\d+\.\d\d  [a-z_]+ [01]\.\d{3}  [a-z_]+ [01]\.\d{3})");
    for (const std::string& line : rows)
        EXPECT_TRUE(std::regex_match(line, row)) << line;
    EXPECT_EQ(rows[1].substr(0, 7), "   0.48");
}

TEST(ClassifyCommandTest, GateColumnFollowsTheEngineLogic)
{
    const CommandRun r = run({kInput, "--gate", "guitar,Violin,piano,voice"});
    ASSERT_EQ(r.status, 0) << r.err;
    const std::regex gated(R"(.*  gate: (closed|open \((guitar|violin|piano|vocal)\))$)");
    for (const std::string& line : lines(r.out))
        EXPECT_TRUE(std::regex_match(line, gated)) << line;
}

TEST(ClassifyCommandTest, BadInputGivesStatusTwoAndOneLine)
{
    const auto notAudio = std::filesystem::temp_directory_path() / "veltra-not-audio.wav";
    std::ofstream(notAudio) << "hello";
    struct Case {
        std::vector<std::string> args;
        std::string mention;
    };
    const Case cases[] = {
        {{"/nonexistent/take.wav"}, "/nonexistent/take.wav"},
        {{notAudio.string()}, notAudio.string()},
        {{}, "exactly one audio file"},
        {{kInput, "--gate", "guitar,banjo"}, "'banjo'"},
        {{kInput, "--top", "0"}, "--top"},
        {{kInput, "--bogus"}, "--bogus"},
    };
    for (const Case& c : cases) {
        const CommandRun r = run(c.args);
        EXPECT_EQ(r.status, 2) << c.mention;
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(lines(r.err).size(), 1u) << r.err;
        EXPECT_NE(r.err.find(c.mention), std::string::npos) << r.err;
    }
    std::filesystem::remove(notAudio);
}

} // namespace
} // namespace veltra
