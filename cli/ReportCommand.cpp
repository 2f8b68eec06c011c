#include "AudioInput.h"
#include "Command.h"
#include "OutputFile.h"
#include "OfflineSoundGate.h"
#include "ReadingTap.h"
#include "SoundOptions.h"
#include "TunerOptions.h"

#include "app/OfflineTuner.h"
#include "classify/SoundCategories.h"
#include "report/PracticeReport.h"

#include <cctype>
#include <filesystem>
#include <optional>
#include <ostream>

namespace veltra::cli {

namespace {

// Plays the recording through the tuner and fills the report's track and
// summary as it goes; nothing of it is kept reading by reading, and the
// trace only where a page will draw it.
void follow(AudioInput& audio, PreferenceStore& preferences, bool useML, bool chart, report::PracticeReport& practice)
{
    std::optional<OfflineSoundGate> gate;
    if (useML)
        gate.emplace(preferences, audio.sampleRate());
    OfflineTuner tuner(preferences, static_cast<int>(audio.sampleRate()),
                       [&gate]() -> const SoundDetection* { return gate ? gate->detection() : nullptr; });
    report::SummaryBuilder summary;
    report::ReadoutFollower follower(
        preferences,
        [&summary](const report::Occurrence& o, const report::CentsDistribution& cents) { summary.add(o, cents); },
        chart);
    ReadingTap tap(tuner, gate, follower);
    const auto feedGate = [&gate](std::span<const float> block) {
        if (gate)
            gate->feed(block);
    };
    std::size_t frames = 0;
    audio.stream(kStreamFrames, [&](std::span<const float> samples) {
        tuner.run(samples, feedGate);
        frames += samples.size();
    });
    practice.track = follower.finish(static_cast<double>(frames) / audio.sampleRate());
    practice.summary = summary.finish(practice.track.soundSeconds, report::NoteNames(practice.settings.sharps));
}

std::vector<std::string> acceptedSounds(const PreferenceStore& preferences)
{
    std::vector<std::string> sounds;
    for (const SoundCategory& category : kSoundCategories)
        if (preferences.boolForKey(category.key)) {
            // As --sounds spells them: the row titles in lower case.
            std::string name(category.title);
            name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
            sounds.push_back(name);
        }
    return sounds;
}

bool sameFile(const std::string& a, const std::string& b)
{
    std::error_code error;
    return std::filesystem::equivalent(a, b, error);
}

} // namespace

int runReportCommand(const Args& args, std::ostream& out, std::ostream&)
{
    ArgReader reader(args);
    const bool json = reader.flag("--json");
    const auto output = reader.option("-o");
    MemoryPreferenceStore preferences = tunerPreferences(reader);
    const bool useML = soundGateOptions(reader, preferences);
    const Args files = reader.positionals();
    if (files.size() != 1)
        throw UsageError("report takes one audio file");
    if (!output && !json)
        throw UsageError("report needs an output file: -o report.html (or --json for standard output)");
    if (output && sameFile(*output, files[0]))
        throw UsageError(*output + ": is the recording itself; choose another output file");
    AudioInput audio(files[0]);

    report::PracticeReport practice;
    practice.settings = {std::filesystem::path(files[0]).filename().string(), audio.fileRate(),
                         preferences.integerForKey(PreferenceKey::A4),
                         preferences.boolForKey(PreferenceKey::SharpsOnly),
                         useML ? acceptedSounds(preferences) : std::vector<std::string>{}};
    follow(audio, preferences, useML, !json, practice);

    const std::string text = json ? report::renderJson(practice) : report::renderHtml(practice);
    if (!output) {
        out << text;
        return kExitOk;
    }
    writeOutputFile(*output, text, out);
    if (*output != "-")
        out << "wrote " << *output << '\n';
    return kExitOk;
}

} // namespace veltra::cli
