#include "AudioInput.h"
#include "Command.h"
#include "OfflineSoundGate.h"
#include "ReadingTap.h"
#include "SoundOptions.h"
#include "TunerOptions.h"
#include "report/Text.h"

#include "app/OfflineTuner.h"
#include "settings/Preferences.h"
#include "dsp/OfflinePatch.h"
#include "dsp/PdDispatcher.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <ostream>
#include <sstream>

namespace veltra::cli {

namespace {

// Every value the patch sends to "frequency", stamped with the audio time at
// the end of the frame that produced it.
class RawPrinter : public PdListener {
public:
    RawPrinter(std::ostream& out, const OfflineDriver& driver, bool json)
        : out_(out)
        , driver_(driver)
        , json_(json)
    {
    }

    void receiveFloat(float value, const std::string&) override
    {
        char line[96];
        std::snprintf(line, sizeof line, json_ ? "{\"t\":%.6f,\"frequency\":%.4f}\n" : "%.6f %.4f\n",
                      driver_.time(), static_cast<double>(value));
        out_ << line;
    }

private:
    std::ostream& out_;
    const OfflineDriver& driver_;
    bool json_;
};

int printRaw(AudioInput& audio, bool json, std::ostream& out, std::ostream& err)
{
    PdBase base;
    PdDispatcher dispatcher(base, err);
    base.setDelegate(&dispatcher);
    OfflinePatch patch(base, static_cast<int>(audio.sampleRate()));
    RawPrinter printer(out, patch.driver(), json);
    dispatcher.addListener(&printer, "frequency");
    audio.stream(kStreamFrames, [&](std::span<const float> block) { patch.driver().run(block); });
    return kExitOk;
}

// What the labels show over the recording: a line at every change, then
// the summary with the median of the deviations the note showed.
class ReadoutTrack {
public:
    ReadoutTrack(std::ostream& out, bool json)
        : out_(out)
        , json_(json)
    {
    }

    void observe(double time, const ViewController::Labels& labels)
    {
        if (labels == shown_)
            return;
        closeSpan(time);
        shown_ = labels;
        since_ = time;
        deviations_[name(labels)].push_back(std::strtod(labels.deviation.c_str(), nullptr));
        if (!labels.concert.empty())
            concerts_[name(labels)] = labels.concert;
        char line[192];
        if (json_)
            std::snprintf(line, sizeof line,
                          "{\"t\":%.3f,\"note\":%s,\"sharpFlat\":%s,\"octaveNumber\":%s,\"deviation\":%s,"
                          "\"frequency\":%s%s}\n",
                          time, report::jsonQuoted(labels.noteName).c_str(), report::jsonQuoted(labels.sharpFlat).c_str(),
                          report::jsonQuoted(labels.octaveNumber).c_str(), report::jsonQuoted(labels.deviation).c_str(),
                          labels.frequency.c_str(), concertField(labels.concert).c_str());
        else
            std::snprintf(line, sizeof line, "%.3f %-4s %7s %s%s\n", time, name(labels).c_str(),
                          labels.deviation.c_str(), labels.frequency.c_str(),
                          labels.concert.empty() ? "" : ("  concert " + labels.concert).c_str());
        out_ << line;
    }

    // The summary: the note that sounded longest, how long it sounded and
    // how long the labels showed it, holding it through any silence after.
    void finish(double time, const std::map<std::string, double>& sounded)
    {
        closeSpan(time);
        const auto longest = std::max_element(durations_.begin(), durations_.end(), [&](const auto& a, const auto& b) {
            return std::pair(soundedFor(sounded, a.first), a.second) < std::pair(soundedFor(sounded, b.first), b.second);
        });
        if (longest == durations_.end()) {
            out_ << (json_ ? "{\"summary\":null}\n" : "summary: no note shown\n");
            return;
        }
        auto& values = deviations_[longest->first];
        std::sort(values.begin(), values.end());
        const std::size_t n = values.size();
        const double median = n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
        const auto concert = concerts_.find(longest->first);
        const std::string concertText = concert == concerts_.end() ? ""
                                        : json_                    ? concertField(concert->second)
                                                                   : " (concert " + concert->second + ")";
        char line[240];
        std::snprintf(line, sizeof line,
                      json_ ? "{\"summary\":{\"note\":%s%s,\"seconds\":%.3f,\"shownSeconds\":%.3f,"
                              "\"medianDeviation\":%.1f}}\n"
                            : "summary: %s%s sounded %.3f s, shown %.3f s, median deviation %+.1f%%\n",
                      json_ ? report::jsonQuoted(longest->first).c_str() : longest->first.c_str(),
                      concertText.c_str(),
                      soundedFor(sounded, longest->first), longest->second, median);
        out_ << line;
    }

private:
    static std::string name(const ViewController::Labels& l) { return l.noteName + l.sharpFlat + l.octaveNumber; }
    // ,"concert":"C4" for a transposing instrument; nothing at concert pitch.
    static std::string concertField(const std::string& concert)
    {
        return concert.empty() ? "" : ",\"concert\":" + report::jsonQuoted(concert);
    }
    static double soundedFor(const std::map<std::string, double>& sounded, const std::string& note)
    {
        const auto found = sounded.find(note);
        return found == sounded.end() ? 0 : found->second;
    }

    void closeSpan(double time)
    {
        if (shown_.noteName != ViewController::Labels().noteName)
            durations_[name(shown_)] += time - since_;
    }

    std::ostream& out_;
    bool json_;
    ViewController::Labels shown_;
    double since_ = 0;
    std::map<std::string, double> durations_;
    std::map<std::string, std::vector<double>> deviations_;
    std::map<std::string, std::string> concerts_; // by written note
};

} // namespace

int runAnalyzeCommand(const Args& args, std::ostream& out, std::ostream& err)
{
    ArgReader reader(args);
    const bool raw = reader.flag("--raw");
    const bool json = reader.flag("--json");
    MemoryPreferenceStore preferences = tunerPreferences(reader);
    const bool useML = soundGateOptions(reader, preferences);
    if (useML && raw)
        throw UsageError("--raw reports the patch alone; --use-ml needs the readout");
    const Args files = reader.positionals();
    if (files.size() != 1)
        throw UsageError("analyze takes one audio file");
    AudioInput audio(files[0]);
    if (raw)
        return printRaw(audio, json, out, err);

    std::optional<OfflineSoundGate> gate;
    if (useML)
        gate.emplace(preferences, audio.sampleRate());
    OfflineTuner tuner(preferences, static_cast<int>(audio.sampleRate()),
                       [&gate]() -> const SoundDetection* { return gate ? gate->detection() : nullptr; });
    ReadoutTrack track(out, json);
    // The follower tells how long each note sounded, as the practice report does.
    report::ReadoutFollower follower(preferences, {}, false);
    ReadingTap tap(tuner, gate, follower);
    const auto afterBlock = [&](std::span<const float> block) {
        if (gate)
            gate->feed(block);
        track.observe(tuner.time(), tuner.screen().labels());
    };
    audio.stream(kStreamFrames, [&](std::span<const float> samples) { tuner.run(samples, afterBlock); });
    track.finish(tuner.time(), follower.finish(tuner.time()).soundedSeconds);
    return kExitOk;
}

} // namespace veltra::cli
