#include "Command.h"
#include "ListenCommand.h"
#include "SoundOptions.h"
#include "TunerOptions.h"
#include "report/Text.h"

#include "app/AppDelegate.h"
#include "app/PdInputTap.h"
#include "app/SceneDelegate.h"
#include "app/ViewController.h"
#include "classify/FallbackAudioInput.h"
#include "classify/RtAudioInput.h"
#include "classify/SoundAnalysisEngine.h"
#include "dsp/AudioBackendFactory.h"
#include "dsp/AudioSession.h"
#include "dsp/PatchFile.h"
#include "dsp/StallWatch.h"
#include "settings/NotificationCenter.h"
#include "settings/PreferenceRules.h"
#include "views/PianoView.h"
#include "views/Canvas.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <iostream>
#include <ostream>
#include <thread>

namespace veltra::cli {

namespace {

volatile std::sig_atomic_t gInterrupted = 0;

// A terminal has no screen saver to hold off.
class NoIdleTimer : public IdleTimer {
public:
    void setIdleTimerDisabled(bool) override {}
};

// A terminal shows no graph, but the graph still has to be drawn each
// frame: its note vote, which the labels follow, grows as it draws.
class DiscardingCanvas : public Canvas {
public:
    void fillRect(const Rect&, const Color&) override {}
    void strokeLine(Point, Point, const Color&, double) override {}
    void fillAndStrokeRect(const Rect&, const Color&, const Color&, double) override {}
};

// "[-----|--#--]": where the deviation lies between 50 cents flat and sharp.
std::string deviationBar(const std::string& deviation)
{
    constexpr int kHalf = 10;
    std::string bar(2 * kHalf + 1, '-');
    bar[kHalf] = '|';
    if (!deviation.empty()) {
        const double cents = std::strtod(deviation.c_str(), nullptr);
        const int at = kHalf + static_cast<int>(std::lround(cents / 50.0 * kHalf));
        bar[static_cast<std::size_t>(std::clamp(at, 0, 2 * kHalf))] = '#';
    }
    return "[" + bar + "]";
}

} // namespace

std::string listenLine(const ViewController::Labels& l, bool transposed)
{
    // The widest each field gets: "A#8" (above the top octave the digit
    // goes), "+50.0%", and five digits of hertz, "96000.0 Hz", as high as
    // the patch hears at the highest rate a device runs at.
    char line[96];
    std::snprintf(line, sizeof line, "  %-3s  %6s  %10s  %s", (l.noteName + l.sharpFlat + l.octaveNumber).c_str(),
                  l.deviation.c_str(), l.frequency.empty() ? "" : (l.frequency + " Hz").c_str(),
                  deviationBar(l.deviation).c_str());
    if (!transposed)
        return line;
    // A transposing instrument's concert note, "-" while there is none.
    char concert[24];
    std::snprintf(concert, sizeof concert, "  concert %-3s", l.concert.empty() ? "-" : l.concert.c_str());
    return line + std::string(concert);
}

namespace {

// {"time":1.250,"note":"A#","octave":3,"cents":-4.0,"frequency":232.4},
// with "concert":"G#3" for a transposing instrument and "category" while
// the sound gate names one; "note":null once the readout is cleared (no
// sound input).
std::string jsonReading(double time, const ViewController::Labels& l, const std::string& category)
{
    char head[48];
    std::snprintf(head, sizeof head, "{\"time\":%.3f,\"note\":", time);
    std::string line = head;
    if (l.octaveNumber.empty() || l.frequency.empty())
        return line + "null}";
    // The deviation reads "+2.0%": a sign, the hundredths of a semitone, a per-cent sign.
    char cents[24];
    std::snprintf(cents, sizeof cents, "%.1f", std::strtod(l.deviation.c_str(), nullptr));
    line += report::jsonQuoted(l.noteName + l.sharpFlat) + ",\"octave\":" + l.octaveNumber + ",\"cents\":" + cents +
            ",\"frequency\":" + l.frequency;
    if (!l.concert.empty())
        line += ",\"concert\":" + report::jsonQuoted(l.concert);
    if (!category.empty())
        line += ",\"category\":" + report::jsonQuoted(category);
    return line + "}";
}

// --input NAME: a source's name, or its description as `devices` lists it.
// A name the server does not know now is kept: the default stands in until
// that source appears.
std::string inputIdentifier(const std::vector<AudioDevice>& devices, const std::string& name)
{
    if (!acceptsText(*preferenceRule(PreferenceKey::InputSource), name))
        throw UsageError("--input takes an input's name of at most " + std::to_string(kLongestInputSource) +
                         " bytes without control characters or spaces at either end");
    const auto described = std::find_if(devices.begin(), devices.end(), [&name](const AudioDevice& d) {
        return d.inputChannels > 0 && !d.identifier.empty() && d.name == name;
    });
    return described != devices.end() ? described->identifier : name;
}

enum class Format {
    Terminal, // one line redrawn in place
    Lines,    // a line per reading, for pipes and files
    Json,     // a JSON object per reading
};

} // namespace

int runListenCommand(const Args& args, std::ostream& out, std::ostream& err)
{
    ArgReader reader(args);
    MemoryPreferenceStore preferences = tunerPreferences(reader);
    const bool json = reader.flag("--json");
    const std::optional<std::string> input = reader.option("--input");
    const bool gateOn = soundGateOptions(reader, preferences);
    if (!reader.positionals().empty())
        throw UsageError("listen takes no file");
    const Format format = json                                            ? Format::Json
                          : &out == &std::cout && isatty(STDOUT_FILENO) ? Format::Terminal
                                                                          : Format::Lines;

    // Everything but the readings goes to standard error: the program's
    // fixed console lines, the patch's diagnostics, the paused line.
    PdBase base;
    const auto backend = makeAudioBackend();
    if (input)
        preferences.setString(inputIdentifier(backend->devices(), *input), PreferenceKey::InputSource);
    AudioSession session(*backend);
    NotificationCenter notifications;
    std::deque<std::function<void()>> mainQueue;
    AppDelegate app([&] { return std::make_unique<PdAudioController>(base, *backend, session); }, err, {},
                    [&preferences] { return preferences.stringForKey(PreferenceKey::InputSource); });
    // The sound gate, as the window's: made on first use, on the tuner's
    // own stream where it has one.
    std::unique_ptr<SoundAnalysisEngine> gate;
    const auto soundAnalysis = [&]() -> const SoundDetection* {
        if (!gate)
            gate = SoundAnalysisEngine::makeDefault(
                preferences, notifications,
                std::make_unique<FallbackAudioInput>(
                    std::make_unique<PdInputTap>([&app] { return app.audioController(); }),
                    std::make_unique<RtAudioInput>()),
                err);
        return gate.get();
    };
    LiveView liveView(preferences);
    bool graphNeedsDisplay = false;
    liveView.setRedrawRequest([&] { graphNeedsDisplay = true; });
    PianoView piano;
    ViewController screen({
        .preferences = preferences,
        .notifications = notifications,
        .pdBase = base,
        .audioSession = session,
        .mainQueue = [&](std::function<void()> task) { mainQueue.push_back(std::move(task)); },
        .console = err,
        .diagnostics = err,
        .cachesDirectory = cachesDirectory(),
        .clock = &StallWatch::now,
        .soundAnalysis = gateOn ? std::function<const SoundDetection*()>(soundAnalysis) : nullptr,
        .clockTimer = nullptr,
        .fontAvailable = {},
        .localizedTime = {},
    });
    screen.setLiveView(&liveView);
    screen.setPianoView(&piano, {});
    screen.viewDidLoad();

    NoIdleTimer idle;
    SceneDelegate scene(&app, idle, err);
    scene.sceneDidBecomeActive();
    screen.setAudioState(app.audioState());

    gInterrupted = 0;
    const auto previous = std::signal(SIGINT, [](int) { gInterrupted = 1; });
    DiscardingCanvas canvas;
    constexpr double kFrame = 1.0 / 60; // the graph's display refresh
    const double started = StallWatch::now();
    double nextFrame = 0;
    std::string line;
    // A status line on a terminal ends the readout's line first, so the two
    // never share one.
    bool lineOpen = false;
    const auto status = [&](const char* text) {
        if (lineOpen) {
            out << '\n' << std::flush;
            line.clear(); // drawn afresh below the status
        }
        lineOpen = false;
        err << "veltra-cli: " << text << '\n' << std::flush;
    };
    // Without an input at the start (no sound server yet) the tuner waits
    // for one, as after a loss.
    AudioState shownState = AudioState::Running;
    double nextRetry = 0;
    while (!gInterrupted) {
        base.receiveMessages();
        while (!mainQueue.empty()) {
            auto task = std::move(mainQueue.front());
            mainQueue.pop_front();
            task();
        }
        if (const double now = StallWatch::now(); now >= nextFrame) {
            nextFrame = now + kFrame;
            if (graphNeedsDisplay) {
                graphNeedsDisplay = false;
                liveView.draw(&canvas, {0, 0, 350, 300});
            }
            const auto& l = screen.labels();
            if (std::string shown = listenLine(l, screen.transposed()); shown != line) {
                line = std::move(shown);
                switch (format) {
                case Format::Terminal:
                    out << "\r\033[K" << line << std::flush;
                    lineOpen = true;
                    break;
                case Format::Lines:
                    out << line << '\n' << std::flush;
                    break;
                case Format::Json:
                    out << jsonReading(now - started, l,
                                       gate && gate->isSoundDetected() ? gate->currentSound() : std::string())
                        << '\n'
                        << std::flush;
                    break;
                }
            }
        }
        // Every way of losing the input is noticed here (the watchdog in
        // checkAudio) and reopened as the window does; the gate's input too.
        AudioState state = app.checkAudio();
        if (const double now = StallWatch::now(); state == AudioState::NoInput && now >= nextRetry) {
            nextRetry = now + AppDelegate::kRetryInterval;
            state = app.retryAudio();
        }
        if (gate)
            gate->checkInput();
        if (state != shownState) {
            screen.setAudioState(state);
            shownState = state;
            status(state == AudioState::Running ? "listening again" : "listening paused: no sound input");
        }
        // One pass per display frame: the patch's readings wait in libpd's
        // queue until then, as they would for the window's next frame.
        std::this_thread::sleep_for(std::chrono::duration<double>(kFrame));
    }
    std::signal(SIGINT, previous);
    if (lineOpen)
        out << '\n';
    scene.sceneWillResignActive();
    return kExitOk;
}

} // namespace veltra::cli
