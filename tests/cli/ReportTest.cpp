#include "Command.h"
#include "report/PracticeReport.h"
#include "report/PracticeSummary.h"
#include "report/PracticeTrack.h"

#include "dsp/AudioFile.h"
#include "dsp/PatchFile.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#ifdef VELTRA_QT_CHECKS
#include <QJsonDocument>
#include <QXmlStreamReader>
#endif

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>

namespace veltra::test {
namespace {

using report::NoteFigures;
using report::Occurrence;
using report::PracticeTrack;

constexpr int kRate = 48000;

double hertz(int key, double cents, double a4 = 440)
{
    return a4 * std::pow(2.0, (key - 49 + cents / 100) / 12);
}

MemoryPreferenceStore defaults()
{
    MemoryPreferenceStore store;
    CommonUtils::setDefaultPreferences(store);
    return store;
}

// --- following the readout -----------------------------------------------------

// A scripted stretch of readings, one every 10 ms: a note (key and cents) or
// silence, and what the labels show meanwhile.
struct Stretch {
    double from, to;
    std::optional<int> key; // nullopt: silence
    double cents;
    std::string shown;
};

struct Expected {
    int key;
    double start, end;
    std::size_t readings;
};

TEST(ReadoutFollower, CutsOccurrencesWhereTheReadoutChangesOrSoundStops)
{
    const struct {
        const char* what;
        std::vector<Stretch> script;
        std::vector<Expected> occurrences;
    } cases[] = {
        {"a change of label ends a note; readings of the next note before the label follows count for none",
         {{0.0, 0.5, 49, 5, "A4"}, {0.5, 0.8, 51, -3, "A4"}, {0.8, 1.2, 51, -3, "B4"}, {1.2, 1.3, {}, 0, "B4"}},
         {{49, 0.0, 0.8, 50}, {51, 0.8, 1.2, 40}}},
        {"silence ends a note, and the same note again counts a second time",
         {{0.0, 0.5, 49, 0, "A4"}, {0.5, 0.7, {}, 0, "A4"}, {0.7, 1.0, 49, 0, "A4"}},
         {{49, 0.0, 0.5, 50}, {49, 0.7, 1.0, 30}}},
        {"a label left over from before a silence is no new note",
         {{0.0, 0.5, 49, 0, "A4"}, {0.5, 0.7, {}, 0, "A4"}, {0.7, 0.9, 52, 0, "A4"}, {0.9, 1.2, 52, 0, "C5"}},
         {{49, 0.0, 0.5, 50}, {52, 0.9, 1.2, 30}}},
        {"before the first label nothing counts",
         {{0.0, 0.3, 49, 0, "-"}, {0.3, 0.6, 49, 0, "A4"}},
         {{49, 0.3, 0.6, 30}}},
        {"a dropout shorter than the silence gap neither ends the note nor counts",
         {{0.0, 0.4, 49, 0, "A4"}, {0.4, 0.43, {}, 0, "A4"}, {0.43, 0.6, 49, 0, "A4"}, {0.6, 0.8, {}, 0, "A4"}},
         {{49, 0.0, 0.6, 57}}},
        {"a slip to another note while the label holds is skipped, the note goes on",
         {{0.0, 0.4, 40, 4, "C4"}, {0.4, 0.5, 52, 0, "C4"}, {0.5, 0.9, 40, 4, "C4"}},
         {{40, 0.0, 0.9, 80}}},
    };
    const MemoryPreferenceStore store = defaults();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        report::ReadoutFollower follower(store);
        double end = 0;
        for (const Stretch& s : c.script) {
            for (double t = s.from; t < s.to - 1e-9; t += 0.01)
                follower.reading(t, s.key ? std::optional(static_cast<float>(hertz(*s.key, s.cents))) : std::nullopt,
                                 s.shown);
            end = s.to;
        }
        const PracticeTrack track = follower.finish(end);
        ASSERT_EQ(track.occurrences.size(), c.occurrences.size());
        for (std::size_t i = 0; i < c.occurrences.size(); ++i) {
            const Occurrence& o = track.occurrences[i];
            const Expected& e = c.occurrences[i];
            EXPECT_EQ(o.key, e.key) << i;
            EXPECT_NEAR(o.start, e.start, 1e-6) << i;
            EXPECT_NEAR(o.end, e.end, 1e-6) << i;
            EXPECT_EQ(o.readings, e.readings) << i;
        }
    }
}

TEST(ReadoutFollower, DeviationsAreTheReadingsOwnNotTheLabelsRoundedText)
{
    const MemoryPreferenceStore store = defaults();
    std::vector<report::CentsDistribution> handed;
    report::ReadoutFollower follower(
        store, [&](const Occurrence&, const report::CentsDistribution& cents) { handed.push_back(cents); });
    for (int i = 0; i < 10; ++i)
        follower.reading(i * 0.01, static_cast<float>(hertz(49, 6.24)), "A4");
    const PracticeTrack track = follower.finish(0.1);
    ASSERT_EQ(track.occurrences.size(), 1u);
    ASSERT_EQ(handed.size(), 1u);
    EXPECT_EQ(handed[0].size(), 10u);
    EXPECT_NEAR(handed[0].quantile(0), 6.24, 0.01); // the labels would say +6.2
    EXPECT_NEAR(handed[0].quantile(1), 6.24, 0.01);
}

// A long recording keeps its figures, not its readings: past a few thousand
// readings the quantiles come from hundredths of a cent, and agree with the
// exact ones to that.
TEST(CentsDistribution, QuantilesStayWithinAHundredthOfACentWhenBinned)
{
    std::vector<double> values;
    report::CentsDistribution few, many;
    for (int i = 0; i < 100000; ++i) {
        const double c = 30 * std::sin(i * 0.7) * std::cos(i * 0.013); // spread over -30..30
        values.push_back(c);
        many.add(c);
        if (i < 1000)
            few.add(c);
    }
    std::sort(values.begin(), values.end());
    for (const double q : {0.0, 0.158655, 0.5, 0.841345, 1.0}) {
        const double position = q * (values.size() - 1);
        const auto below = static_cast<std::size_t>(position);
        const std::size_t above = std::min(below + 1, values.size() - 1);
        const double exact = values[below] + (position - below) * (values[above] - values[below]);
        EXPECT_NEAR(many.quantile(q), exact, 0.01) << q;
    }
    const auto within = std::count_if(values.begin(), values.end(), [](double c) { return std::abs(c) <= 10; });
    EXPECT_NEAR(static_cast<double>(many.countWithin(10)), static_cast<double>(within), values.size() * 1e-3);
    // Merging binned and exact distributions counts every reading once.
    many.merge(few);
    EXPECT_EQ(many.size(), 101000u);
}

// The trace of a long recording holds a point per pixel of the chart, not
// every reading; a short one every reading.
TEST(ReadoutFollower, TheTraceGrowsWithTheChartNotTheReadings)
{
    const MemoryPreferenceStore store = defaults();
    report::ReadoutFollower follower(store);
    const double step = 256.0 / 48000; // the patch's readings at 48 kHz
    std::size_t readings = 0;
    for (double t = 0; t < 120; t += step, ++readings)
        follower.reading(t, std::fmod(t, 2) < 1 ? std::optional(static_cast<float>(hertz(49, 3))) : std::nullopt, "A4");
    const PracticeTrack track = follower.finish(120);
    const double firstLine = report::kFullLineSeconds / step;
    const double pixels = (120 - report::kFullLineSeconds) * report::kPixelsPerSecond;
    EXPECT_LT(static_cast<double>(track.trace.size()), firstLine + pixels / 2 + 120) << readings;
    EXPECT_NEAR(track.soundSeconds, 60, 0.1);
}

// --- the figures ------------------------------------------------------------------

// Readings spread evenly over median +- half, in tenths of a cent.
std::vector<double> even(double median, double half)
{
    std::vector<double> out;
    for (double c = median - half; c <= median + half + 1e-9; c += 0.1)
        out.push_back(c);
    return out;
}

// An occurrence with its readings' deviations, as the follower hands them on.
struct Played {
    Occurrence occurrence;
    std::vector<double> cents;
};

Played occurrence(int key, double start, double seconds, std::vector<double> cents)
{
    return {{key, start, start + seconds, cents.size()}, std::move(cents)};
}

report::PracticeSummary summarize(const std::vector<Played>& played)
{
    report::SummaryBuilder builder;
    for (const Played& p : played) {
        report::CentsDistribution cents;
        for (const double c : p.cents)
            cents.add(c);
        builder.add(p.occurrence, cents);
    }
    return builder.finish(0, report::NoteNames(true));
}

const NoteFigures& find(const std::vector<NoteFigures>& list, const std::string& name)
{
    const auto it = std::find_if(list.begin(), list.end(), [&](const NoteFigures& f) { return f.name == name; });
    if (it == list.end())
        throw std::runtime_error(name + " not listed");
    return *it;
}

TEST(PracticeSummary, MedianSpreadAndInTuneShareFollowTheirDefinitions)
{
    std::vector<Played> track = {occurrence(49, 0, 1, even(6.2, 10))};
    const auto summary = summarize(track);
    ASSERT_EQ(summary.notes.size(), 1u);
    const NoteFigures& a4 = summary.notes[0];
    EXPECT_EQ(a4.name, "A4");
    EXPECT_NEAR(a4.medianCents, 6.2, 1e-9);
    // The middle 68.27 % of an even spread of +-10 reaches +-6.827.
    EXPECT_NEAR(a4.spreadCents, 6.827, 0.001);
    // -3.8 to +10.0 in tenths: 139 of 201 readings.
    EXPECT_NEAR(a4.inTuneShare, 139.0 / 201.0, 1e-9);

    // A few stray readings barely move the median and the spread.
    track[0].cents.insert(track[0].cents.end(), {48, 49, -49});
    const auto strayed = summarize(track).notes[0];
    EXPECT_NEAR(strayed.medianCents, 6.25, 0.06);
    EXPECT_NEAR(strayed.spreadCents, 6.83, 0.2);
}

TEST(PracticeSummary, BriefNotesAreListedApartAndOctavesPoolIntoPitchClasses)
{
    const std::vector<Played> track = {
        occurrence(37, 0.0, 1.0, std::vector<double>(100, 10.0)),  // A3 +10
        occurrence(55, 1.0, 0.15, std::vector<double>(30, 40.0)),  // D#5, too brief
        occurrence(49, 1.2, 1.0, std::vector<double>(100, -10.0)), // A4 -10
        occurrence(49, 2.4, 0.5, std::vector<double>(50, -10.0)),  // A4 again
        occurrence(40, 3.0, 0.5, std::vector<double>(50, 3.0)),    // C4 +3
        occurrence(41, 3.6, 0.5, std::vector<double>(50, -30.0)),  // C#4 -30
    };
    const auto summary = summarize(track);

    ASSERT_EQ(summary.brief.size(), 1u);
    EXPECT_EQ(summary.brief[0].name, "D#5");
    EXPECT_EQ(summary.brief[0].times, 1);
    EXPECT_NEAR(summary.shownSeconds, 3.65, 1e-9);

    std::vector<std::string> order;
    for (const NoteFigures& f : summary.notes)
        order.push_back(f.name);
    EXPECT_EQ(order, (std::vector<std::string>{"C#4", "A3", "A4", "C4"})); // largest deviation first
    EXPECT_EQ(find(summary.notes, "A4").times, 2);
    EXPECT_NEAR(find(summary.notes, "A4").seconds, 1.5, 1e-9);

    const NoteFigures& a = find(summary.pitchClasses, "A");
    EXPECT_EQ(a.times, 3);
    EXPECT_EQ(a.readings, 250u);
    EXPECT_NEAR(a.medianCents, -10.0, 1e-9); // 150 of the 250 readings are -10
    EXPECT_EQ(summary.pitchClasses.size(), 3u);
    EXPECT_THROW(find(summary.pitchClasses, "D#"), std::runtime_error);
}

TEST(PracticeSummary, NamesFollowTheSharpsOrFlatsSetting)
{
    const struct {
        bool sharps;
        int key;
        const char* note;
        const char* pitchClass;
    } cases[] = {
        {true, 50, "A#4", "A#"}, {false, 50, "Bb4", "Bb"}, {false, 46, "F#4", "F#"},
        {true, 40, "C4", "C"},   {false, 28, "C3", "C"},   {false, 19, "Eb2", "Eb"},
    };
    for (const auto& c : cases) {
        const report::NoteNames names(c.sharps);
        EXPECT_EQ(names.note(c.key), c.note);
        EXPECT_EQ(names.pitchClass(((c.key - 40) % 12 + 12) % 12), c.pitchClass);
        EXPECT_EQ(report::withGlyphs(c.note).find('#'), std::string::npos);
    }
    EXPECT_EQ(report::withGlyphs("F#4 and Bb3, but Db is not b"), "F\u266F4 and B\u266D3, but D\u266D is not b");
    EXPECT_EQ(report::signedCents(6.24), "+6.2");
    EXPECT_EQ(report::signedCents(-0.04), "0.0");
    EXPECT_EQ(report::signedCents(-3.05), "\u22123.1");
}

// --- the command over generated recordings, through the real patch ----------------

// The JSON figures of one list ("notes", "pitchClasses", "brief") by note name.
// The text after "name": up to the next comma or brace.
std::string field(const std::string& entry, const std::string& name)
{
    const auto at = entry.find("\"" + name + "\": ");
    if (at == std::string::npos)
        return {};
    const auto from = at + name.size() + 4;
    return entry.substr(from, entry.find_first_of(",}", from) - from);
}

std::string unquoted(const std::string& text)
{
    return text.size() >= 2 ? text.substr(1, text.size() - 2) : text;
}

// The JSON figures of one list ("notes", "pitchClasses", "brief") by note
// name, read as another program would: entry by entry, field by field.
std::map<std::string, NoteFigures> figures(const std::string& json, const std::string& list)
{
    const auto start = json.find("\"" + list + "\": [");
    const std::string text = json.substr(start, json.find(']', start) - start);
    std::map<std::string, NoteFigures> out;
    for (auto at = text.find("{\"note\""); at != std::string::npos; at = text.find("{\"note\"", at + 1)) {
        const std::string entry = text.substr(at, text.find('}', at) + 1 - at);
        NoteFigures f;
        f.name = unquoted(field(entry, "note"));
        f.key = std::stoi(field(entry, list == "pitchClasses" ? "pitchClass" : "key"));
        f.times = std::stoi(field(entry, "times"));
        f.seconds = std::stod(field(entry, "seconds"));
        if (list != "brief") {
            f.readings = std::stoul(field(entry, "readings"));
            f.medianCents = std::stod(field(entry, "medianCents"));
            f.spreadCents = std::stod(field(entry, "spreadCents"));
            f.inTuneShare = std::stod(field(entry, "inTuneShare"));
        }
        out[f.name] = f;
    }
    return out;
}

struct ReportCommand : ::testing::Test {
    std::filesystem::path dir = std::filesystem::temp_directory_path() / ("veltra-report-" + makeUuidString());

    void SetUp() override { std::filesystem::create_directories(dir); }
    void TearDown() override { std::filesystem::remove_all(dir); }

    std::string wav(const std::string& name, const std::vector<float>& samples)
    {
        const auto path = (dir / name).string();
        writeWavFile(path, samples, 1, kRate);
        return path;
    }

    std::string run(cli::Args args)
    {
        std::ostringstream out, err;
        EXPECT_EQ(cli::runReportCommand(args, out, err), cli::kExitOk);
        return out.str();
    }

    std::string read(const std::filesystem::path& path)
    {
        std::ifstream in(path);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    // Notes of a second each with a fifth of a second of silence after each.
    std::vector<float> played(const std::vector<std::pair<int, double>>& notes, double a4 = 440)
    {
        std::vector<float> audio = silence(0.3, kRate);
        for (const auto& [key, cents] : notes)
            audio = concat(concat(audio, sine(hertz(key, cents, a4), 0.4, 1.0, kRate)), silence(0.2, kRate));
        return audio;
    }
};

TEST_F(ReportCommand, AScaleOffByKnownAmountsIsReportedNoteByNote)
{
    // G3 +10, A3 -5, B3 0, C4 +10, D4 -5, E4 0.
    const std::vector<std::pair<int, double>> truth{{35, 10}, {37, -5}, {39, 0}, {40, 10}, {42, -5}, {44, 0}};
    const std::string json = run({wav("scale.wav", played(truth)), "--json"});
    const auto notes = figures(json, "notes");
    ASSERT_EQ(notes.size(), truth.size()) << json;
    const report::NoteNames names(true);
    for (const auto& [key, cents] : truth) {
        SCOPED_TRACE(names.note(key));
        const NoteFigures& f = notes.at(names.note(key));
        EXPECT_NEAR(f.medianCents, cents, 0.3);
        EXPECT_LT(f.spreadCents, 0.3);
        EXPECT_EQ(f.times, 1);
        // Shown from soon after the onset (the graph's vote) to the silence.
        EXPECT_GT(f.seconds, 0.6);
        EXPECT_LE(f.seconds, 1.0);
        // +10 is the bar's edge, where a reading falls either way; elsewhere
        // only the odd reading as the note starts or dies away is off.
        if (std::abs(cents) < 9) {
            EXPECT_GT(f.inTuneShare, 0.95);
        }
    }
    // Sharpest and flattest first.
    EXPECT_LT(json.find("\"G3\""), json.find("\"A3\""));
    EXPECT_LT(json.find("\"A3\""), json.find("\"B3\""));
    EXPECT_TRUE(figures(json, "brief").empty()) << json;
    EXPECT_EQ(figures(json, "pitchClasses").size(), truth.size());
}

TEST_F(ReportCommand, AHabitShowsAcrossOctavesInTheUsersTuning)
{
    // F#3 and F#4 both 12 cents sharp against A4 = 432, among in-tune notes, named with flats.
    const std::vector<std::pair<int, double>> truth{{34, 12}, {37, 0}, {46, 12}, {48, 0}, {50, 0}};
    const std::string json = run({wav("habit.wav", played(truth, 432)), "--json", "--a4", "432", "--flats"});
    const auto classes = figures(json, "pitchClasses");
    ASSERT_TRUE(classes.count("F#")) << json;
    EXPECT_EQ(classes.at("F#").times, 2);
    EXPECT_NEAR(classes.at("F#").medianCents, 12, 0.3);
    ASSERT_TRUE(classes.count("Bb")) << json;
    EXPECT_NEAR(classes.at("Bb").medianCents, 0, 0.3);
    EXPECT_NE(json.find("\"a4\": 432, \"names\": \"flats\""), std::string::npos) << json;
}

TEST_F(ReportCommand, APageThatStandsAloneAndAgreesWithTheJson)
{
    // A file name with characters that mean something in HTML and JSON.
    const std::string file = wav("mixed & \"<matched>\".wav", played({{40, 7}, {46, -12}, {47, 0}, {40, 3}}));
    const std::string json = run({file, "--json"});
    const auto html = dir / "report.html";
    EXPECT_EQ(run({file, "-o", html.string()}), "wrote " + html.string() + "\n");
    const std::string page = read(html);

    // Nothing is fetched: no address, no script, no linked file.
    for (const char* outside : {"://", "<script", "<link", "src=", "href=", "@import", "url("})
        EXPECT_EQ(page.find(outside), std::string::npos) << outside;
    EXPECT_NE(page.find("<svg class=\"pitch\""), std::string::npos);
    EXPECT_NE(page.find("@media print"), std::string::npos);
    EXPECT_NE(page.find("F\u266F4"), std::string::npos); // the glyph, as on screen
    EXPECT_NE(page.find("mixed &amp; &quot;&lt;matched&gt;&quot;.wav"), std::string::npos);
#ifdef VELTRA_QT_CHECKS
    QXmlStreamReader xml(QByteArray::fromStdString(page));
    while (!xml.atEnd())
        xml.readNext();
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString() << " at line " << xml.lineNumber() << ", column "
                                 << xml.columnNumber();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    EXPECT_EQ(document["file"].toString().toStdString(), "mixed & \"<matched>\".wav");
#endif

    // Every row of the page's note table is the JSON's figure, rounded.
    const auto notes = figures(json, "notes");
    const auto tableStart = page.find("<table id=\"notes\">");
    const std::string table = page.substr(tableStart, page.find("</table>", tableStart) - tableStart);
    std::size_t rows = 0;
    for (auto at = table.find("<tr data-key=\""); at != std::string::npos; at = table.find("<tr data-key=\"", at + 1)) {
        ++rows;
        const std::string row = table.substr(at, table.find("</tr>", at) - at);
        const int key = std::stoi(row.substr(14));
        const auto match =
            std::find_if(notes.begin(), notes.end(), [&](const auto& n) { return n.second.key == key; });
        ASSERT_NE(match, notes.end()) << row;
        const NoteFigures& f = match->second;
        // The cells' texts, without the units.
        std::vector<std::string> cells;
        for (auto open = row.find("<t", 1); open != std::string::npos; open = row.find("<t", open + 1)) {
            const auto text = row.find('>', open) + 1;
            cells.push_back(row.substr(text, row.find("&#160;", text) < row.find('<', text)
                                                 ? row.find("&#160;", text) - text
                                                 : row.find('<', text) - text));
        }
        ASSERT_EQ(cells.size(), 6u) << row;
        EXPECT_EQ(cells[0], report::withGlyphs(f.name));
        EXPECT_EQ(std::stoi(cells[1]), f.times);
        EXPECT_NEAR(std::stod(cells[2]), f.seconds, 0.05 + 1e-9);
        EXPECT_EQ(cells[3], report::signedCents(f.medianCents));
        ASSERT_TRUE(cells[4].starts_with("±")) << row;
        EXPECT_NEAR(std::stod(cells[4].substr(std::string("±").size())), f.spreadCents, 0.05 + 1e-9);
        EXPECT_NEAR(std::stod(cells[5]), 100 * f.inTuneShare, 0.5 + 1e-9);
    }
    EXPECT_EQ(rows, notes.size());
    EXPECT_EQ(notes.at("C4").times, 2);
}

TEST_F(ReportCommand, SilenceMakesAnEmptyReportNotAnError)
{
    const std::string json = run({wav("quiet.wav", silence(1.0, kRate)), "--json"});
    EXPECT_TRUE(figures(json, "notes").empty());
    EXPECT_NE(json.find("\"soundSeconds\": 0.000"), std::string::npos) << json;
    const auto html = dir / "quiet.html";
    run({wav("quiet.wav", silence(1.0, kRate)), "-o", html.string()});
    EXPECT_NE(read(html).find("No note was shown long enough to measure."), std::string::npos);
}

TEST_F(ReportCommand, TheSoundGateKeepsNoiseOffTheReportAndIsNamedInIt)
{
    std::vector<float> noise(kRate * 3);
    std::uint32_t state = 12345;
    for (float& x : noise) {
        state = state * 1664525u + 1013904223u;
        x = 0.3f * (static_cast<float>(state >> 8) / 8388608.0f - 1.0f);
    }
    const std::string file = wav("noise.wav", noise);
    const std::string gated = run({file, "--json", "--use-ml", "--sounds", "violin,voice"});
    EXPECT_TRUE(figures(gated, "notes").empty()) << gated;
    EXPECT_NE(gated.find("\"soundGate\": [\"violin\", \"voice\"]"), std::string::npos) << gated;
    // Without the gate the patch does hear pitch in the noise.
    EXPECT_EQ(run({file, "--json"}).find("\"soundSeconds\": 0.000"), std::string::npos);
}

TEST_F(ReportCommand, BadArgumentsAreOneLineErrorsAndLoseNothing)
{
    const std::string recording = wav("take.wav", played({{49, 0}}));
    const auto before = std::filesystem::file_size(recording);
    const auto earlier = dir / "earlier.html";
    std::ofstream(earlier) << "an earlier report";
    const struct {
        cli::Args args;
        const char* mentions;
    } cases[] = {
        {{recording}, "needs an output file"},
        {{recording, "-o", recording}, "is the recording itself"},
        {{recording, "-o", (dir / "no" / "r.html").string()}, "cannot be written"},
        {{recording, (dir / "other.wav").string(), "--json"}, "one audio file"},
        {{(dir / "missing.wav").string(), "--json"}, "no such file"},
        {{recording, "--json", "--a4", "380"}, "--a4 must be a number from 400 to 499"},
        {{recording, "--json", "--sounds", "voice"}, "--sounds goes with --use-ml"},
        {{recording, "-o", earlier.string(), "--bars"}, "unknown option --bars"},
    };
    for (const auto& c : cases) {
        std::ostringstream out, err;
        try {
            cli::runReportCommand(c.args, out, err);
            ADD_FAILURE() << "accepted: " << c.mentions;
        } catch (const cli::UsageError& e) {
            EXPECT_NE(std::string(e.what()).find(c.mentions), std::string::npos) << e.what();
            EXPECT_EQ(std::string(e.what()).find('\n'), std::string::npos);
        }
        EXPECT_TRUE(out.str().empty());
    }
    EXPECT_EQ(std::filesystem::file_size(recording), before);
    EXPECT_EQ(read(earlier), "an earlier report");
}

} // namespace
} // namespace veltra::test
