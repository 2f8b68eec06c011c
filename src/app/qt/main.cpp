// Veltra: the tuner's window. This is the composition root: it builds the
// engine, the preference store and the screen logic, and binds them to QML.
#include "app/AppDelegate.h"
#include "app/SceneDelegate.h"
#include "app/ViewController.h"
#include "app/qt/QtRepeatingTimer.h"
#include "app/qt/ScreenSaverInhibitor.h"
#include "app/qt/TunerScreen.h"
#include "app/PdInputTap.h"
#include "classify/FallbackAudioInput.h"
#include "classify/RtAudioInput.h"
#include "classify/SoundAnalysisEngine.h"
#include "dsp/AudioSession.h"
#include "dsp/PatchFile.h"
#include "dsp/PdBase.h"
#include "dsp/RtAudioBackend.h"
#include "settings/IniPreferenceStore.h"
#include "settings/NotificationCenter.h"
#include "views/PianoView.h"

#include <QFontDatabase>
#include <QtQml/QQmlExtensionPlugin>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>

#include <chrono>
#include <clocale>
#include <ctime>
#include <iostream>

Q_IMPORT_QML_PLUGIN(VeltraUiPlugin)

using namespace veltra;

namespace {

// How often the patch's messages are collected on the main thread: faster
// than the patch's frames (5.3 ms at 48 kHz) would only spin.
constexpr int kPollIntervalMs = 5;

std::string localizedTime()
{
    const std::time_t now = std::time(nullptr);
    char text[64];
    return std::strftime(text, sizeof text, "%X", std::localtime(&now)) ? text : "";
}

double steadySeconds()
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

int main(int argc, char** argv)
{
    std::setlocale(LC_ALL, "");
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Veltra"));
    QQuickStyle::setStyle(QStringLiteral("Basic"));

    const auto preferences = IniPreferenceStore::open(IniPreferenceStore::defaultPath(), std::cout);
    NotificationCenter notifications;
    PdBase pdBase;
    RtAudioBackend backend;
    AudioSession session(backend);
    AppDelegate appDelegate([&] { return std::make_unique<PdAudioController>(pdBase, backend, session); },
                            std::cout);
    appDelegate.applicationDidFinishLaunching();
    ScreenSaverInhibitor screenSaver(std::cerr);
    SceneDelegate scene(&appDelegate, screenSaver, std::cout);

    // The classification gate's engine is made the first time the readout
    // asks for it, which it does only while the gate is switched on.
    // It listens on a stream of its own, or, where the device cannot be
    // opened twice, on the tuner's.
    SoundAnalysisEngine::setSharedFactory([&] {
        return SoundAnalysisEngine::makeDefault(
            *preferences, notifications,
            std::make_unique<FallbackAudioInput>(
                std::make_unique<RtAudioInput>(),
                std::make_unique<PdInputTap>([&appDelegate] { return appDelegate.audioController(); })));
    });

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
        .clock = steadySeconds,
        .soundAnalysis = []() -> const SoundDetection* { return &SoundAnalysisEngine::shared(); },
        .clockTimer = &clockTimer,
        .fontAvailable = [](const std::string& family, double) {
            return QFontDatabase::families().contains(QString::fromStdString(family));
        },
        .localizedTime = localizedTime,
    });
    TunerScreen tunerScreen(screen, liveView, pianoView);
    TunerScreen::setInstance(&tunerScreen);
    screen.setLiveView(&liveView);
    screen.setPianoView(&pianoView, [&tunerScreen] { tunerScreen.requestPianoRedraw(); });
    screen.viewDidLoad();

    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        pdBase.receiveMessages();
        const PdAudioController* controller = appDelegate.audioController();
        if (controller && controller->deviceLost() && tunerScreen.audioProblem().isEmpty()) {
            std::cout << "audio device lost" << std::endl;
            tunerScreen.setAudioProblem(QStringLiteral("The audio device went away. Reopen the window to retry."));
        }
    });
    poll.start(kPollIntervalMs);

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    QObject::connect(&engine, &QQmlApplicationEngine::objectCreationFailed, &application,
                     [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
    engine.load(QUrl(QStringLiteral("qrc:/VeltraUi/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());

    // Audio runs while the window is shown; minimised or hidden stops it.
    bool active = false;
    const auto follow = [&](QWindow::Visibility visibility) {
        const bool shown = visibility != QWindow::Hidden && visibility != QWindow::Minimized;
        if (shown == active)
            return;
        active = shown;
        if (shown) {
            tunerScreen.setAudioProblem({});
            scene.sceneDidBecomeActive();
        } else {
            scene.sceneWillResignActive();
        }
    };
    QObject::connect(window, &QWindow::visibilityChanged, follow);
    follow(window->visibility());

    const int status = QGuiApplication::exec();
    follow(QWindow::Hidden);
    return status;
}
