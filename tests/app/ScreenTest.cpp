#include "app/OfflineTuner.h"
#include "app/qt/TunerScreen.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/Signals.h"

#include <QGuiApplication>
#include <QImage>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

Q_IMPORT_QML_PLUGIN(VeltraUiPlugin)

namespace veltra::test {
namespace {

// The main screen rendered offscreen after a steady A has been heard: the
// labels, the graph and the keyboard as a person would see them. With
// VELTRA_SCREENSHOT_DIR set, the picture is saved there.
TEST(Screen, ShowsTheReadingTheGraphAndTheKeyboard)
{
    int argc = 1;
    char name[] = "ui_tests";
    char* argv[] = {name, nullptr};
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen"); // no display needed
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QGuiApplication application(argc, argv);

    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    preferences.setBool(true, PreferenceKey::PianoView);
    OfflineTuner tuner(preferences, 48000);
    tuner.run(sine(440.0, 0.3, 1.5, 48000));

    TunerScreen screen(tuner.screen(), tuner.liveView(), tuner.pianoView());
    TunerScreen::setInstance(&screen);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    engine.load(QUrl(QStringLiteral("qrc:/VeltraUi/Main.qml")));
    ASSERT_FALSE(engine.rootObjects().isEmpty());
    auto* window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    ASSERT_NE(window, nullptr);
    window->resize(420, 860);
    tuner.screen().applyDisplayPreferences();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    QTest::qWait(100);

    const auto text = [window](const char* objectName) {
        const QObject* label = window->findChild<QObject*>(QString::fromLatin1(objectName));
        return label ? label->property("text").toString().toStdString() : std::string("(missing)");
    };
    EXPECT_EQ(text("noteName"), "A");
    EXPECT_EQ(text("octaveNumber"), "4");
    EXPECT_EQ(text("deviation"), "+0.0%");
    EXPECT_EQ(text("frequency"), "440.0 Hz");

    const QImage image = window->grabWindow();
    ASSERT_FALSE(image.isNull());
    int barPixels = 0, litKeyPixels = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            barPixels += c.green() > 150 && c.red() < 90 && c.blue() > 100 && c.blue() < 170;
            litKeyPixels += c.green() > 240 && c.red() < 30 && c.blue() < 30;
        }
    EXPECT_GT(barPixels, 1000) << "the in-tune bar is not on screen";
    EXPECT_GT(litKeyPixels, 50) << "no key is lit";

    if (const char* dir = std::getenv("VELTRA_SCREENSHOT_DIR")) {
        std::filesystem::create_directories(dir);
        EXPECT_TRUE(image.save(QString::fromLocal8Bit(dir) + QStringLiteral("/tuner.png")));
    }
}

} // namespace
} // namespace veltra::test
