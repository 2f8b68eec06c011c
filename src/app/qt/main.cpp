// Veltra: the tuner's window. This is the composition root: it builds the
// engine, the preference store and the screen logic, and binds them to QML.
#include "AppId.h"
#include "app/AppDelegate.h"
#include "app/qt/AppScreens.h"
#include "app/qt/InputMethodChoice.h"
#include "app/SceneDelegate.h"
#include "app/ViewController.h"
#include "app/qt/QtRepeatingTimer.h"
#include "app/qt/RendererChoice.h"
#include "app/qt/ScreenSaverInhibitor.h"
#include "app/qt/TunerScreen.h"
#include "app/qt/Translations.h"
#include "app/PdInputTap.h"
#include "classify/FallbackAudioInput.h"
#include "classify/RtAudioInput.h"
#include "classify/SoundAnalysisEngine.h"
#include "dsp/AudioBackendFactory.h"
#include "dsp/AudioSession.h"
#include "dsp/PatchFile.h"
#include "dsp/PdBase.h"
#include "dsp/StallWatch.h"
#include "settings/IniPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "views/PianoView.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFontDatabase>
#include <QProcess>
#include <QtQml/QQmlExtensionPlugin>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <cmath>
#include <clocale>
#include <ctime>
#include <iostream>
#include <optional>

Q_IMPORT_QML_PLUGIN(VeltraUiPlugin)

using namespace veltra;

namespace {

// How often the patch's messages are collected on the main thread: once per
// display frame (60 Hz). The graph and labels change only when a frame is
// drawn, so collecting the patch's readings (one per 5.3 ms at 48 kHz) any
// sooner would wake the program three times as often to show the same
// frames; a reading waits at most one frame.
constexpr int kPollIntervalMs = 16;

std::string localizedTime()
{
    const std::time_t now = std::time(nullptr);
    char text[64];
    return std::strftime(text, sizeof text, "%X", std::localtime(&now)) ? text : "";
}

// A mail program is registered for mailto addresses when the desktop's MIME
// database names one.
bool hasMailHandler()
{
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                             QStringLiteral("x-scheme-handler/mailto")});
    return query.waitForFinished(2000) && query.exitCode() == 0 && !query.readAllStandardOutput().trimmed().isEmpty();
}

// The app's own title faces are drawn with DejaVu Sans: "FolksHw" in its
// semibold weight, "BoldHw" in bold. Any other face must be installed.
bool fontAvailable(const std::string& family, double)
{
    const bool ours = family == "FolksHw" || family == "BoldHw";
    return QFontDatabase::families().contains(ours ? QStringLiteral("DejaVu Sans") : QString::fromStdString(family));
}

} // namespace

int main(int argc, char** argv)
{
    veltra::quietSoundServerLog();
    std::setlocale(LC_ALL, "");
    chooseRenderer();
    chooseInputMethod();
    QGuiApplication application(argc, argv);
    // Qt takes the environment's locale for every category; numbers that
    // go to files and to the patch (preferences, the patch's own text) must
    // keep their '.', so C's number formatting stays fixed. What a person
    // reads is localized by the screens (Translations).
    std::setlocale(LC_NUMERIC, "C");
    Translations::use(QLocale::system());
    QGuiApplication::setApplicationName(QStringLiteral("Veltra"));
    // The desktop matches the window to its launcher entry and icon by this id.
    QGuiApplication::setDesktopFileName(QStringLiteral(VELTRA_APP_ID));
    QGuiApplication::setWindowIcon(
        QIcon::fromTheme(QStringLiteral(VELTRA_APP_ID), QIcon(QStringLiteral(":/icons/veltra-256.png"))));
    QQuickStyle::setStyle(QStringLiteral("Basic"));

    const auto preferences = IniPreferenceStore::open(IniPreferenceStore::defaultPath(), std::cout);
    NotificationCenter notifications;
    PdBase pdBase;
    const auto backend = makeAudioBackend();
    AudioSession session(*backend);
    AppDelegate appDelegate([&] { return std::make_unique<PdAudioController>(pdBase, *backend, session); },
                            std::cout, {}, [&] { return preferences->stringForKey(PreferenceKey::InputSource); });
    appDelegate.applicationDidFinishLaunching();
    ScreenSaverInhibitor screenSaver(std::cerr);
    SceneDelegate scene(&appDelegate, screenSaver, std::cout);

    // The classification gate's engine is made the first time the readout
    // asks for it, which it does only while the gate is switched on.
    // It listens on the tuner's own stream, which costs no second stream
    // and rests when the tuner does; on a stream of its own only when the
    // tuner's has no microphone.
    // Once made, its input is watched with the tuner's (checkInput below).
    SoundAnalysisEngine* soundAnalysis = nullptr;
    SoundAnalysisEngine::setSharedFactory([&] {
        auto engine = SoundAnalysisEngine::makeDefault(
            *preferences, notifications,
            std::make_unique<FallbackAudioInput>(
                std::make_unique<PdInputTap>([&appDelegate] { return appDelegate.audioController(); }),
                std::make_unique<RtAudioInput>()));
        soundAnalysis = engine.get();
        return engine;
    });

    AppScreens screens({
        .preferences = *preferences,
        .notifications = notifications,
        .desktop = {
            .openUrl = [](const QUrl& url) { return QDesktopServices::openUrl(url); },
            .hasMailHandler = hasMailHandler,
            .copyToClipboard = [](const QString& text) { QGuiApplication::clipboard()->setText(text); },
        },
        .soundClassifierAvailable = true,
        .fontAvailable = fontAvailable,
        .inputDevices = [&backend] { return backend->devices(); },
    });
    AppScreens::setInstance(&screens);

    QtRepeatingTimer clockTimer;
    LiveView liveView(*preferences);
    PianoView pianoView;
    ViewController screen({
        .preferences = *preferences,
        .notifications = notifications,
        .pdBase = pdBase,
        .audioSession = session,
        .mainQueue = [&application](std::function<void()> task) {
            QMetaObject::invokeMethod(&application, std::move(task), Qt::QueuedConnection);
        },
        .console = std::cout,
        .diagnostics = std::cerr,
        .cachesDirectory = cachesDirectory(),
        .clock = &StallWatch::now,
        .soundAnalysis = []() -> const SoundDetection* { return &SoundAnalysisEngine::shared(); },
        .clockTimer = &clockTimer,
        .fontAvailable = fontAvailable,
        .localizedTime = localizedTime,
        .moreOptions = &screens.moreOptions()->menu(),
    });
    TunerScreen tunerScreen(screen, liveView, pianoView);
    TunerScreen::setInstance(&tunerScreen);
    screen.setLiveView(&liveView);
    screen.setPianoView(&pianoView, [&tunerScreen] { tunerScreen.requestPianoRedraw(); });
    screens.attach(screen);
    screen.viewDidLoad();

    // Changes to the preference file from outside (another window of the
    // tuner, the user's editor) apply as if made in our own settings.
    std::optional<QSocketNotifier> preferenceWatch;
    if (const int watch = preferences->watchDescriptor(); watch >= 0) {
        preferenceWatch.emplace(watch, QSocketNotifier::Read);
        QObject::connect(&*preferenceWatch, &QSocketNotifier::activated,
                         [&] { applyOutsideChanges(*preferences, notifications); });
    }

    // A lost stream (or one silent for a second: AppDelegate's watchdog) is
    // noticed with the next frame, so the screen never shows a note that is
    // no longer heard; reopening is tried on a timer.
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        screen.setAudioState(appDelegate.checkAudio());
        if (soundAnalysis)
            soundAnalysis->checkInput();
        pdBase.receiveMessages();
    });
    QTimer audioRetry;
    QObject::connect(&audioRetry, &QTimer::timeout, [&] { screen.setAudioState(appDelegate.retryAudio()); });
    audioRetry.start(std::chrono::milliseconds(std::lround(AppDelegate::kRetryInterval * 1000)));
    poll.start(kPollIntervalMs);

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    QObject::connect(&engine, &QQmlApplicationEngine::objectCreationFailed, &application,
                     [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
    engine.load(QUrl(QStringLiteral("qrc:/VeltraUi/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    screens.moreOptions()->setHasWindow([window] { return window->isVisible(); });
    // The main screen's first appearance, once the window is up.
    QTimer::singleShot(0, &tunerScreen, &TunerScreen::appeared);

    // Audio runs while the window is shown; minimised or hidden stops it.
    bool active = false;
    const auto follow = [&](QWindow::Visibility visibility) {
        const bool shown = visibility != QWindow::Hidden && visibility != QWindow::Minimized;
        if (shown == active)
            return;
        active = shown;
        if (shown)
            scene.sceneDidBecomeActive();
        else
            scene.sceneWillResignActive();
        screen.setAudioState(appDelegate.audioState());
    };
    QObject::connect(window, &QWindow::visibilityChanged, follow);
    follow(window->visibility());

    const int status = QGuiApplication::exec();
    follow(QWindow::Hidden);
    return status;
}
