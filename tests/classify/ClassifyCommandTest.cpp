#include "ClassifyCommand.h"
#include "ReferenceData.h"
#include "dsp/AudioFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
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

// One output line: the window's time, then label and score pairs, best first.
struct Row {
    double time = -1;
    std::vector<std::pair<std::string, double>> labels;
    std::string rest;
};

Row parse(const std::string& line)
{
    Row row;
    std::istringstream in(line);
    in >> row.time;
    std::string label;
    double score = 0;
    while (in >> label && label != "gate:" && in >> score)
        row.labels.emplace_back(label, score);
    if (label == "gate:")
        std::getline(in, row.rest);
    return row;
}

TEST(ClassifyCommandTest, PrintsTimeAndTopLabelsPerWindow)
{
    const CommandRun r = run({kInput, "--top", "2"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    const auto rows = lines(r.out);
    // The four seconds of the reference input: seven regular windows, and
    // the windows that hear again what one of them closed, in time order.
    std::size_t regular = 0;
    double last = -1;
    for (std::size_t w = 0; w < rows.size(); ++w) {
        const Row row = parse(rows[w]);
        EXPECT_GT(row.time, last) << rows[w];
        last = row.time;
        if (test::onRegularGrid(row.time)) {
            EXPECT_DOUBLE_EQ(row.time, 0.48 * double(regular++)) << rows[w];
        }
        ASSERT_EQ(row.labels.size(), 2u) << rows[w];
        EXPECT_GE(row.labels[0].second, row.labels[1].second) << rows[w];
        EXPECT_EQ(row.rest, "") << rows[w];
    }
    EXPECT_EQ(regular, 7u);
}

TEST(ClassifyCommandTest, GateColumnFollowsTheEngineLogic)
{
    const CommandRun r = run({kInput, "--gate", "guitar,Violin,piano,voice"});
    ASSERT_EQ(r.status, 0) << r.err;
    for (const std::string& line : lines(r.out)) {
        const Row row = parse(line);
        EXPECT_EQ(row.labels.size(), 3u) << line;
        // Open exactly when one of the accepted labels shown scores above 0.5.
        const std::set<std::string> accepted{"guitar", "electric_guitar", "bass_guitar", "acoustic_guitar",
                                             "steel_guitar_slide_guitar", "guitar_tapping", "guitar_strum",
                                             "violin_fiddle", "piano", "electric_piano", "singing", "humming",
                                             "whistling"};
        const bool shownAccepted = std::any_of(row.labels.begin(), row.labels.end(), [&](const auto& l) {
            return accepted.count(l.first) && l.second > 0.5;
        });
        if (shownAccepted)
            EXPECT_EQ(row.rest.substr(0, 6), " open ") << line;
        else
            EXPECT_TRUE(row.rest == " closed" || row.rest.substr(0, 6) == " open ") << line;
    }
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
