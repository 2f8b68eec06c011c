// Every screen and dialog in a phone's window, upright and turned, at the
// device pixel ratio the test runs under (ctest runs this file at 2 and at
// 3), in every language the app ships: nothing cut off or overlapping,
// every control a finger can hit, every text readable.
#include "support/PageCheck.h"
#include "support/Signals.h"

#include <QScreen>
#include <QtQml/QQmlExtensionPlugin>

#include <cmath>

Q_IMPORT_QML_PLUGIN(VeltraUiPlugin)

namespace veltra::test {
namespace {

class Phone : public InEveryLanguage {};

// A phone shows every screen upright (360 x 720) and turned (720 x 360). The
// pictures saved are phone-dpr<ratio>-<orientation>-<screen> of the pages in
// English, and of the tuner and the settings in German and Japanese at ratio
// 2, with the language's name after them.
bool pictured(const std::string& language, const std::string& screen, int ratio)
{
    if (language == "en")
        return screen == "tuner" || screen == "settings" || screen == "frequency" || screen == "select-sounds";
    return (language == "de" || language == "ja") && ratio == 2 &&
           (screen == "tuner" || screen == "settings" || screen == "menu" || screen == "microphone-alert");
}

TEST_P(Phone, EveryScreenFitsWithFingerSizedControlsAndReadableText)
{
    const int ratio = int(std::lround(QGuiApplication::primaryScreen()->devicePixelRatio()));
    ASSERT_GE(ratio, 1);
    const std::string suffix = GetParam() == "en" ? "" : "-" + GetParam();
    struct Size {
        int width, height;
        const char* orientation;
    };
    for (const Size size : {Size{360, 720, "portrait"}, Size{720, 360, "landscape"}}) {
        UiRig rig({size.width, size.height}, [](PreferenceStore& p) {
            p.setBool(true, PreferenceKey::PianoView);
            p.setBool(true, PreferenceKey::UseML); // the sound row and its screen too
        });
        EXPECT_DOUBLE_EQ(rig.window->devicePixelRatio(), ratio);
        // A G3, as from a guitar, with its status line showing.
        rig.hear(sawtooth(196.0, 0.3, 1.5, 48000));
        visitEveryScreen(rig, [&](const std::string& screen, QQuickItem* root) {
            SCOPED_TRACE(screen + " " + size.orientation);
            EXPECT_EQ(rig.window->width(), size.width);
            for (const std::string& fault : PageCheck(*rig.window).faults(root))
                ADD_FAILURE() << fault;
            const QImage shot = rig.window->grabWindow();
            EXPECT_EQ(shot.width(), size.width * ratio) << "the window is not drawn at the screen's ratio";
            if (pictured(GetParam(), screen, ratio))
                rig.screenshot(
                    ("phone-dpr" + std::to_string(ratio) + "-" + size.orientation + "-" + screen + suffix).c_str());
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, Phone, ::testing::ValuesIn(everyLanguage()), InEveryLanguage::name);

} // namespace
} // namespace veltra::test
