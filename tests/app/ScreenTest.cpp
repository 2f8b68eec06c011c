#include "share/MoreOptionsMenu.h"
#include "share/ShareConfiguration.h"
#include "support/PageCheck.h"
#include "support/UiRig.h"

#include <QAccessible>
#include <QKeySequence>
#include <QRegularExpression>
#include <QtQml/QQmlExtensionPlugin>

#include <gmock/gmock.h>

#include <map>
#include <set>

Q_IMPORT_QML_PLUGIN(VeltraUiPlugin)

namespace veltra::test {
namespace {

using ::testing::ElementsAre;

class Screens : public ::testing::Test {
protected:
    static void SetUpTestSuite() { UiRig::ensureApplication(); }

    // Counts the broadcasts of the settings screens.
    void countPosts(UiRig& rig)
    {
        for (const std::string_view name : {Notification::UpdateUI, Notification::UpdateIdentifiers})
            rig.notifications.addObserver(name, [this, name](const void*) { ++posted[std::string(name)]; });
    }
    std::map<std::string, int> posted;
};

// Counts the pixels of the graph's in-tune bar and of a lit key.
std::pair<int, int> barAndLitKeyPixels(const QImage& image)
{
    int bar = 0, litKey = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            bar += c.green() > 150 && c.red() < 90 && c.blue() > 100 && c.blue() < 170;
            litKey += c.green() > 240 && c.red() < 30 && c.blue() < 30;
        }
    return {bar, litKey};
}

QString accessibleName(QObject* object)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(object);
    return accessible ? accessible->text(QAccessible::Name) : QStringLiteral("(not accessible)");
}

TEST_F(Screens, MainScreenShowsTheReadingGraphAndKeyboardAndSpeaksTheReadout)
{
    UiRig rig({390, 844}, [](PreferenceStore& p) { p.setBool(true, PreferenceKey::PianoView); });
    rig.screenshot("tuner-phone-rest");
    EXPECT_EQ(accessibleName(rig.item("readout")), "No note yet");
    {
        // The graph paints its own rounded panel: the page shows at its
        // corners, the panel's colour between the bar and the edges.
        const QImage rest = rig.window->grabWindow();
        const QRectF graph = rig.item("graph")->mapRectToScene(rig.item("graph")->boundingRect());
        const auto at = [&](qreal x, qreal y) { return rest.pixelColor(QPointF(x, y).toPoint()); };
        const QColor page = at(graph.left() - 4, graph.center().y());
        const QColor panel = rig.item("graph")->parentItem()->property("color").value<QColor>();
        EXPECT_EQ(at(graph.left(), graph.top()), page);
        EXPECT_EQ(at(graph.right() - 1, graph.bottom() - 1), page);
        EXPECT_EQ(at(graph.left() + graph.width() / 4, graph.center().y()), panel);
        EXPECT_NE(page, panel);
    }

    rig.hear(sine(440.0, 0.3, 1.5, 48000));
    EXPECT_EQ(rig.text("noteName"), "A");
    EXPECT_EQ(rig.text("octaveNumber"), "4");
    EXPECT_EQ(rig.text("deviation"), "+0.0%");
    EXPECT_EQ(rig.text("frequency"), "440.0 Hz");
    EXPECT_EQ(accessibleName(rig.item("readout")), "A 4, in tune, 440.0 hertz");

    const auto [bar, litKey] = barAndLitKeyPixels(rig.window->grabWindow());
    EXPECT_GT(bar, 1000) << "the in-tune bar is not on screen";
    EXPECT_GT(litKey, 50) << "no key is lit";
    rig.screenshot("tuner-phone");

    // The spoken readout follows the labels.
    rig.hear(sine(466.1638, 0.3, 1.5, 48000));
    EXPECT_EQ(accessibleName(rig.item("readout")), "A sharp 4, in tune, 466.2 hertz");
}

// While there is no input the main screen says so in one line and shows no
// note, no trace and no lit key; once the input is back the line goes and
// the next note is read.
TEST_F(Screens, NoInputShowsOneLineAndNoNote)
{
    UiRig rig({390, 844}, [](PreferenceStore& p) { p.setBool(true, PreferenceKey::PianoView); });
    EXPECT_FALSE(rig.shown("audioProblem"));
    rig.hear(sine(440.0, 0.3, 1.5, 48000));
    ASSERT_EQ(rig.text("noteName"), "A");

    rig.tuner->screen().setAudioState(AudioState::NoInput);
    rig.settle();
    EXPECT_TRUE(rig.shown("audioProblem"));
    EXPECT_EQ(rig.text("audioProblem"), "Listening paused: no sound input");
    EXPECT_EQ(rig.text("noteName"), "-");
    EXPECT_EQ(accessibleName(rig.item("readout")), "No note yet");
    const auto [bar, litKey] = barAndLitKeyPixels(rig.window->grabWindow());
    EXPECT_EQ(litKey, 0) << "a key stays lit";
    rig.screenshot("tuner-no-input");

    rig.tuner->screen().setAudioState(AudioState::Running);
    rig.hear(sine(196.0, 0.3, 1.5, 48000));
    EXPECT_FALSE(rig.shown("audioProblem"));
    EXPECT_EQ(rig.text("noteName"), "G");
}

// The keyboard draws one white key more than fits, just past its right
// edge; on every renderer nothing of it shows outside the keyboard.
TEST_F(Screens, TheKeyboardStaysInsideItsView)
{
    UiRig rig({390, 844}, [](PreferenceStore& p) { p.setBool(true, PreferenceKey::PianoView); });
    const QImage image = rig.window->grabWindow();
    const QRect piano = rig.item("piano")->mapRectToScene(rig.item("piano")->boundingRect()).toRect();
    const QColor page = image.pixelColor(image.width() - 1, piano.center().y());
    const int keyWidth = piano.width() / 52 + 2;
    int stray = 0;
    for (int y = piano.top() - 3; y <= piano.bottom() + 3; ++y)
        for (int x = piano.right() + 1; x <= piano.right() + keyWidth; ++x)
            stray += image.pixelColor(x, y) != page;
    for (const int y : {piano.top() - 1, piano.top() - 2, piano.bottom() + 1, piano.bottom() + 2})
        for (int x = piano.left(); x <= piano.right(); ++x)
            stray += image.pixelColor(x, y) != page;
    EXPECT_EQ(stray, 0) << "pixels of the keyboard outside " << piano.width() << "x" << piano.height() << " at "
                        << piano.x() << "," << piano.y();
}

// A button's tip belongs to the page it was asked on: the page gone, the tip
// goes too, though the pointer still rests on the same button.
TEST_F(Screens, AButtonsTipGoesWithItsPage)
{
    UiRig rig;
    rig.click("accessory");
    rig.runMainQueue();
    ASSERT_EQ(rig.text("title"), "Settings");
    const auto shownTips = [&rig] {
        QStringList tips;
        for (QObject* tip : rig.engine.findChildren<QObject*>() + rig.window->findChildren<QObject*>())
            if (tip->inherits("QQuickToolTip") && tip->property("visible").toBool())
                tips << tip->property("text").toString();
        return tips;
    };
    QQuickItem* back = rig.item("back");
    back->setProperty("hoverEnabled", true); // as on a desktop; the offscreen platform has no hover
    QTest::mouseMove(rig.window, QPoint(rig.window->width() / 2, rig.window->height() / 2));
    rig.settle(100);
    QTest::mouseMove(rig.window, back->mapToScene(QPointF(back->width() / 2, back->height() / 2)).toPoint());
    rig.settle(1000);
    EXPECT_THAT(shownTips(), ElementsAre("Back (Esc)"));

    rig.click("back");
    rig.settle(1000);
    EXPECT_EQ(rig.text("title"), "Veltra");
    EXPECT_THAT(shownTips(), ElementsAre());
}

// Turned round, the graph cannot be rasterised straight into the window's
// pixels and goes through Qt's painter instead: its trace, newest at the
// top, must then run up from the bottom.
TEST_F(Screens, TurnedGraphIsPaintedTurned)
{
    UiRig rig({390, 844});
    rig.hear(sine(440.0, 0.3, 1.0, 48000)); // a trace down part of the graph
    const QRect graph = rig.item("graph")->mapRectToScene(rig.item("graph")->boundingRect()).toRect();
    // White trace pixels in the graph's top and bottom eighths.
    const auto traceAtEnds = [&] {
        const QImage image = rig.window->grabWindow();
        int top = 0, bottom = 0;
        for (int y = graph.top(); y <= graph.bottom(); ++y)
            for (int x = graph.left(); x <= graph.right(); ++x) {
                const QColor c = image.pixelColor(x, y);
                const bool white = c.red() > 240 && c.green() > 240 && c.blue() > 240;
                top += white && y < graph.top() + graph.height() / 8;
                bottom += white && y > graph.bottom() - graph.height() / 8;
            }
        return std::pair{top, bottom};
    };
    const auto [uprightTop, uprightBottom] = traceAtEnds();
    EXPECT_GT(uprightTop, 20);
    EXPECT_EQ(uprightBottom, 0);
    rig.item("graph")->setRotation(180);
    rig.settle(50);
    const auto [turnedTop, turnedBottom] = traceAtEnds();
    EXPECT_EQ(turnedTop, 0);
    EXPECT_GT(turnedBottom, 20);
}

TEST_F(Screens, NavigationReachesEveryScreenAndComesBack)
{
    UiRig rig;
    rig.click("accessory");
    rig.runMainQueue(); // the permission answer arrives on the main queue
    EXPECT_EQ(rig.text("title"), "Settings");
    rig.click("referenceFrequency");
    EXPECT_EQ(rig.text("title"), "A\u2084 Frequency");
    rig.key(Qt::Key_Escape);
    EXPECT_EQ(rig.text("title"), "Settings");
    rig.click("soundClassification");
    rig.click("selectSounds");
    EXPECT_EQ(rig.text("title"), "Select Sounds");
    rig.click("back");
    rig.key(Qt::Key_Escape);
    EXPECT_EQ(rig.text("title"), "Veltra");
    EXPECT_THAT(rig.screens->navigationController().stack(), ElementsAre("Tuner"));

    // Ctrl+, does what the gear button does.
    rig.key(Qt::Key_Comma, Qt::ControlModifier);
    rig.runMainQueue();
    EXPECT_EQ(rig.text("title"), "Settings");
}

TEST_F(Screens, EverySwitchWritesItsKeyAndOnlyTheLayoutOnesPostUpdateUI)
{
    UiRig rig;
    countPosts(rig);
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    struct Case {
        const char* row;
        std::string_view key;
        bool postsUpdateUI;
    };
    const Case cases[] = {
        {"toneGenerator", PreferenceKey::ToneGenerator, true},
        {"greenOverlay", PreferenceKey::GreenOverlay, false},
        {"sharpsOnly", PreferenceKey::SharpsOnly, true},
        {"continuousDisplay", PreferenceKey::ContinuousDisplay, false},
        {"pianoView", PreferenceKey::PianoView, true},
        {"clock", PreferenceKey::ClockEnabled, false},
        {"soundClassification", PreferenceKey::UseML, false},
    };
    for (const Case& c : cases) {
        const bool before = rig.preferences.boolForKey(c.key);
        posted.clear();
        rig.click(c.row);
        EXPECT_EQ(rig.preferences.boolForKey(c.key), !before) << c.row;
        EXPECT_EQ(posted["UpdateUI"], c.postsUpdateUI ? 1 : 0) << c.row;
        EXPECT_EQ(posted["UpdateIdentifiers"], 0) << c.row;
    }
    // The main screen followed at once.
    EXPECT_TRUE(rig.tunerScreen->pianoVisible());
    EXPECT_FALSE(rig.tunerScreen->toneGeneratorVisible());
    EXPECT_EQ(rig.tunerScreen->sharpFlatButtonImages(), (QStringList{"FG_E_FLAT", "FG_A_FLAT", "FG_B_FLAT"}));

    // Keyboard: Tab reaches a row, Space toggles it.
    rig.item("greenOverlay")->forceActiveFocus();
    rig.key(Qt::Key_Space);
    EXPECT_TRUE(rig.preferences.boolForKey(PreferenceKey::GreenOverlay));

    rig.key(Qt::Key_Escape);
    EXPECT_TRUE(rig.shown("piano"));
    EXPECT_FALSE(rig.shown("tone1"));
    EXPECT_FALSE(rig.shown("octave"));
}

TEST_F(Screens, SoundSectionRowAndFooterFollowTheSwitchAndTheChosenSounds)
{
    UiRig rig;
    countPosts(rig);
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    const auto footer = [&] { return rig.screens->settings()->footers().value(10); };
    EXPECT_FALSE(rig.shown("selectSounds"));
    EXPECT_THAT(footer().toStdString(), ::testing::StartsWith("Use machine learning"));
    rig.screenshot("settings");

    rig.click("soundClassification");
    EXPECT_TRUE(rig.shown("selectSounds"));
    EXPECT_EQ(footer(), "Selected Sounds: Guitar.");
    rig.click("selectSounds");

    // The last checked row stays checked; every tap posts once.
    rig.click("sound0");
    EXPECT_TRUE(rig.preferences.boolForKey(PreferenceKey::SoundsGuitar));
    rig.click("sound1");
    rig.click("sound0");
    rig.click("sound3");
    EXPECT_EQ(posted["UpdateIdentifiers"], 4);
    EXPECT_EQ(rig.screens->sounds()->checked(), (QList<bool>{false, true, false, true}));
    EXPECT_EQ(footer(), "Selected Sounds: Violin and Voice.");
    rig.screenshot("select-sounds");

    rig.key(Qt::Key_Escape);
    rig.screenshot("settings-sound-classification");
}

TEST_F(Screens, PickerStoresEverySelectionAndResets)
{
    UiRig rig;
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    rig.click("referenceFrequency");
    EXPECT_EQ(rig.item("wheel")->property("currentIndex").toInt(), 40);
    rig.key(Qt::Key_Up);
    rig.key(Qt::Key_Up);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 442);
    rig.screenshot("frequency");

    // The readout follows the new reference: 440 Hz is now 7.9 cents flat.
    rig.hear(sine(440.0, 0.3, 1.5, 48000));
    EXPECT_EQ(rig.tunerScreen->deviation(), "-7.9%");

    rig.click("reset");
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 440);
    EXPECT_EQ(rig.item("wheel")->property("currentIndex").toInt(), 40);
    for (int press = 0; press < 4 && rig.window->activeFocusItem() != rig.item("wheel"); ++press)
        rig.key(Qt::Key_Tab, Qt::ShiftModifier); // back to the wheel
    rig.key(Qt::Key_Up);
    rig.key(Qt::Key_Escape);
    EXPECT_EQ(rig.screens->settings()->frequency(), "441 Hz");
}

TEST_F(Screens, MenuRatesSharesAndContacts)
{
    UiRig rig;
    const auto choose = [&](int index) {
        rig.click("moreOptions");
        rig.screenshot("menu");
        rig.click(("menuItem" + std::to_string(index)).c_str());
    };
    ASSERT_EQ(rig.screens->moreOptions()->entries().size(), 4);
    choose(0);
    choose(1);
    EXPECT_THAT(rig.opened, ElementsAre(ShareConfiguration::kRateAddress, ShareConfiguration::kMoreAppsAddress));

    choose(2);
    ASSERT_TRUE(rig.shown("share"));
    rig.screenshot("share");
    rig.click("copy");
    EXPECT_TRUE(rig.clipboard.startsWith("I've been using this great instrument tuner app"));
    EXPECT_TRUE(rig.clipboard.endsWith(ShareConfiguration::kShareLink));
    rig.click("close");

    choose(3);
    EXPECT_EQ(rig.opened.back(), QUrl(QString::fromStdString(MoreOptionsMenu::contactAddress())).toString());
    EXPECT_FALSE(rig.shown("alert"));

    rig.hasMailHandler = false;
    choose(3);
    ASSERT_TRUE(rig.shown("alert"));
    rig.screenshot("alert");
    rig.click("dismiss");
    EXPECT_FALSE(rig.shown("alert"));
}

TEST_F(Screens, ReviewIsRequestedOnTheEleventhAppearanceOnly)
{
    UiRig rig; // the first appearance
    for (int appearance = 2; appearance <= 10; ++appearance) {
        rig.screens->navigation()->push(QStringLiteral("Settings"));
        rig.key(Qt::Key_Escape);
    }
    EXPECT_FALSE(rig.shown("review"));
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.key(Qt::Key_Escape);
    ASSERT_TRUE(rig.shown("review"));
    rig.screenshot("review");
    rig.click("accept");
    EXPECT_THAT(rig.opened, ElementsAre(ShareConfiguration::kRateAddress));

    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.key(Qt::Key_Escape);
    EXPECT_FALSE(rig.shown("review"));
    EXPECT_EQ(rig.preferences.integerForKey(MoreOptionsMenu::kLaunchCount), 12);
}

// At every size from a small phone up, the main screen's parts lie inside
// the window and apart from each other.
TEST_F(Screens, MainScreenFitsFromSmallPhonesToDesktops)
{
    struct Size {
        int width, height;
        const char* screenshot;
    };
    for (const Size size : {Size{320, 568, nullptr}, Size{390, 844, nullptr}, Size{820, 1180, "tuner-tablet"},
                            Size{1280, 800, "tuner-desktop"}}) {
        UiRig rig({size.width, size.height}, [](PreferenceStore& p) { p.setBool(true, PreferenceKey::PianoView); });
        if (size.screenshot)
            rig.screenshot((std::string(size.screenshot) + "-rest").c_str());
        rig.hear(sine(196.0, 0.3, 1.5, 48000));
        EXPECT_EQ(rig.text("noteName"), "G");
        const QRectF window(0, 52, size.width, size.height - 52); // below the title bar
        std::vector<std::pair<std::string, QRectF>> parts;
        for (const char* name : {"readout", "tone1", "tone12", "octave"}) {
            const QQuickItem* part = rig.item(name);
            parts.emplace_back(name, part->mapRectToScene(QRectF(0, 0, part->width(), part->height())));
        }
        for (const auto& [name, rect] : parts)
            EXPECT_TRUE(window.contains(rect)) << name << " is cut at " << size.width << "x" << size.height;
        for (std::size_t i = 0; i < parts.size(); ++i)
            for (std::size_t j = i + 1; j < parts.size(); ++j) {
                EXPECT_FALSE(parts[i].second.intersects(parts[j].second))
                    << parts[i].first << " overlaps " << parts[j].first << " at " << size.width;
            }
        if (size.screenshot)
            rig.screenshot(size.screenshot);
    }
}

// Every control the Tab key reaches has a name a screen reader can say.
TEST_F(Screens, TabReachesNamedControlsOnEveryScreen)
{
    UiRig rig;
    rig.preferences.setBool(true, PreferenceKey::UseML);
    for (const char* screen : {"Tuner", "Settings", "SelectSounds"}) {
        if (std::string(screen) != "Tuner")
            rig.screens->navigation()->push(QString::fromLatin1(screen));
        rig.settle();
        std::set<QQuickItem*> seen;
        for (int press = 0; press < 40; ++press) {
            rig.key(Qt::Key_Tab);
            QQuickItem* focused = rig.window->activeFocusItem();
            if (!focused || !seen.insert(focused).second)
                break;
            EXPECT_FALSE(accessibleName(focused).isEmpty())
                << screen << ": " << focused->metaObject()->className() << " " << focused->objectName().toStdString();
        }
        EXPECT_GE(seen.size(), 4u) << screen;
    }
}

// The control the keyboard is on lies in sight: inside the window, and
// inside every scrolling list that holds it.
::testing::AssertionResult focusInSight(const UiRig& rig)
{
    QQuickItem* focused = rig.window->activeFocusItem();
    if (!focused)
        return ::testing::AssertionFailure() << "nothing has the keyboard's focus";
    QRectF sight(QPointF(), rig.window->size());
    for (QQuickItem* up = focused->parentItem(); up; up = up->parentItem())
        if (up->inherits("QQuickFlickable"))
            sight &= up->mapRectToScene(up->boundingRect());
    const QRectF rect = focused->mapRectToScene(focused->boundingRect());
    if (sight.adjusted(-0.5, -0.5, 0.5, 0.5).contains(rect))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << focused->metaObject()->className() << " "
                                         << focused->objectName().toStdString() << " \""
                                         << focused->property("text").toString().toStdString() << "\" at y "
                                         << rect.top() << " to " << rect.bottom() << ", in sight " << sight.top()
                                         << " to " << sight.bottom();
}

// Keys only: each press leaves the focus in sight.
class Keyboard {
public:
    explicit Keyboard(UiRig& rig) : rig_(rig) {}

    // A key, then what it set going: a page sliding in, a popup opening or
    // closing.
    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(rig_.window, static_cast<Qt::Key>(key), modifiers);
        const QQuickItem* stack = rig_.item("stack");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !stack->property("busy").toBool(); }));
        QTest::qWait(kPopupMs);
        EXPECT_TRUE(focusInSight(rig_)) << "after key " << QKeySequence(key | modifiers).toString().toStdString();
    }
    QQuickItem* focused() const { return rig_.window->activeFocusItem(); }
    // Tabs forward until the control named objectName has the focus.
    bool tabTo(const char* objectName)
    {
        return tabUntil([&](QQuickItem* item) { return item->objectName() == QLatin1String(objectName); });
    }
    bool tabUntil(const std::function<bool(QQuickItem*)>& wanted)
    {
        for (int press = 0; press < 80; ++press) {
            if (focused() && wanted(focused()))
                return true;
            this->press(Qt::Key_Tab);
        }
        return false;
    }
    // Every control Tab reaches from here until it comes round again.
    std::vector<QQuickItem*> tabRound()
    {
        std::vector<QQuickItem*> seen;
        for (int press = 0; press < 80; ++press) {
            this->press(Qt::Key_Tab);
            if (!seen.empty() && focused() == seen.front())
                break;
            seen.push_back(focused());
        }
        return seen;
    }

private:
    // Longer than a popup's opening or closing transition.
    static constexpr int kPopupMs = 120;
    UiRig& rig_;
};

// A walk through every screen and dialog with Tab, Enter, Space and Escape
// alone (arrows and the page keys where a control or list takes them):
// every control is reached and worked, Enter does what Space does, and the
// focused control is in sight after every key.
TEST_F(Screens, KeyboardAloneWorksEveryScreenAndDialog)
{
    UiRig rig({390, 700}, [](PreferenceStore& p) { p.setBool(true, PreferenceKey::UseML); });
    Keyboard keys(rig);
    const auto flag = [&](std::string_view key) { return rig.preferences.boolForKey(key); };

    // The tuner: the readout, the title bar's buttons, the tones and the octave.
    std::set<QString> reached;
    for (QQuickItem* item : keys.tabRound())
        reached.insert(item->objectName());
    for (const char* name : {"readout", "accessory", "moreOptions", "tone1", "tone12"})
        EXPECT_TRUE(reached.count(QString::fromLatin1(name))) << name << " is not reached";
    ASSERT_TRUE(keys.tabTo("tone2"));
    for (const int key : {int(Qt::Key_Space), int(Qt::Key_Return), int(Qt::Key_Enter)}) {
        const auto releases = rig.tuner->screen().toneGenerator().toneCancelIncrement();
        keys.press(key);
        EXPECT_EQ(rig.tuner->screen().toneGenerator().toneCancelIncrement(), releases + 1) << "key " << key;
    }
    ASSERT_TRUE(keys.tabUntil([](QQuickItem* item) { return item->inherits("QQuickRadioButton"); }));
    keys.press(Qt::Key_Right);
    EXPECT_EQ(rig.item("octave")->property("currentIndex").toInt(), 1);

    // The options menu and its dialogs.
    ASSERT_TRUE(keys.tabTo("moreOptions"));
    keys.press(Qt::Key_Return);
    ASSERT_TRUE(rig.shown("optionsMenu"));
    for (int down = 0; down < 6 && keys.focused()->objectName() != QLatin1String("menuItem2"); ++down)
        keys.press(Qt::Key_Down);
    keys.press(Qt::Key_Return);
    ASSERT_TRUE(rig.shown("share"));
    ASSERT_TRUE(keys.tabTo("copy"));
    keys.press(Qt::Key_Enter);
    EXPECT_TRUE(rig.clipboard.endsWith(ShareConfiguration::kShareLink));
    keys.press(Qt::Key_Escape);
    EXPECT_FALSE(rig.shown("share"));
    rig.hasMailHandler = false;
    ASSERT_TRUE(keys.tabTo("moreOptions"));
    keys.press(Qt::Key_Enter);
    for (int down = 0; down < 6 && keys.focused()->objectName() != QLatin1String("menuItem3"); ++down)
        keys.press(Qt::Key_Down);
    keys.press(Qt::Key_Space);
    ASSERT_TRUE(rig.shown("alert"));
    keys.press(Qt::Key_Return);
    EXPECT_FALSE(rig.shown("alert"));

    // Settings: every row comes into sight as Tab reaches it; Space and
    // Enter toggle a switch alike.
    ASSERT_TRUE(keys.tabTo("accessory"));
    keys.press(Qt::Key_Return);
    rig.runMainQueue();
    ASSERT_EQ(rig.text("title"), "Settings");
    reached.clear();
    for (QQuickItem* item : keys.tabRound())
        reached.insert(item->objectName());
    for (const char* name : {"referenceFrequency", "toneGenerator", "pianoView", "clock", "soundClassification",
                             "selectSounds"})
        EXPECT_TRUE(reached.count(QString::fromLatin1(name))) << name << " is not reached";
    ASSERT_TRUE(keys.tabTo("greenOverlay"));
    const bool green = flag(PreferenceKey::GreenOverlay);
    keys.press(Qt::Key_Space);
    EXPECT_EQ(flag(PreferenceKey::GreenOverlay), !green);
    keys.press(Qt::Key_Return);
    EXPECT_EQ(flag(PreferenceKey::GreenOverlay), green);
    keys.press(Qt::Key_Enter);
    EXPECT_EQ(flag(PreferenceKey::GreenOverlay), !green);
    EXPECT_TRUE(rig.item("greenOverlay")->property("checked").toBool() == !green);
    ASSERT_TRUE(keys.tabUntil([](QQuickItem* item) { return item->inherits("QQuickSlider"); }));
    const double latency = rig.preferences.floatForKey(PreferenceKey::Latency);
    keys.press(Qt::Key_Right);
    EXPECT_EQ(rig.preferences.floatForKey(PreferenceKey::Latency), latency + 1);

    // The page keys scroll and take the focus along; Home and End reach the
    // first and the last control of the list, past which Tab leaves it.
    const auto inList = [&] {
        for (QQuickItem* up = keys.focused(); up; up = up->parentItem())
            if (up->inherits("QQuickFlickable"))
                return true;
        return false;
    };
    keys.press(Qt::Key_Home);
    QQuickItem* first = keys.focused();
    EXPECT_EQ(first->objectName(), QStringLiteral("referenceFrequency"));
    keys.press(Qt::Key_PageDown);
    EXPECT_NE(keys.focused(), first) << "Page Down left the focus where it was";
    keys.press(Qt::Key_End);
    QQuickItem* last = keys.focused();
    keys.press(Qt::Key_Tab);
    EXPECT_FALSE(inList()) << "End stopped before " << last->objectName().toStdString();
    keys.press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(keys.focused(), last);
    keys.press(Qt::Key_PageUp);
    EXPECT_NE(keys.focused(), last) << "Page Up left the focus where it was";
    ASSERT_TRUE(keys.tabTo("clock")); // a row: a choice box keeps Home for its own first entry
    keys.press(Qt::Key_Home);
    EXPECT_EQ(keys.focused(), first);

    // Select Sounds: Space and Enter tick and untick a row.
    ASSERT_TRUE(keys.tabTo("selectSounds"));
    keys.press(Qt::Key_Enter);
    ASSERT_EQ(rig.text("title"), "Select Sounds");
    ASSERT_TRUE(keys.tabTo("sound1"));
    keys.press(Qt::Key_Space);
    EXPECT_TRUE(flag(PreferenceKey::SoundsViolin));
    EXPECT_TRUE(keys.focused()->property("checked").toBool());
    keys.press(Qt::Key_Return);
    EXPECT_FALSE(flag(PreferenceKey::SoundsViolin));
    ASSERT_TRUE(keys.tabTo("sound0"));
    keys.press(Qt::Key_Space); // the last ticked sound stays ticked
    EXPECT_TRUE(flag(PreferenceKey::SoundsGuitar));
    EXPECT_TRUE(keys.focused()->property("checked").toBool());
    keys.press(Qt::Key_Escape);
    ASSERT_EQ(rig.text("title"), "Settings");

    // The reference A: Up raises it, Down lowers it, the page keys by ten.
    ASSERT_TRUE(keys.tabTo("referenceFrequency"));
    keys.press(Qt::Key_Return);
    ASSERT_EQ(rig.text("title"), "A\u2084 Frequency");
    EXPECT_EQ(keys.focused()->objectName(), QStringLiteral("wheel"));
    const struct {
        int key;
        std::int64_t a4;
    } steps[] = {{Qt::Key_Up, 441}, {Qt::Key_Up, 442}, {Qt::Key_Down, 441}, {Qt::Key_PageUp, 451},
                 {Qt::Key_PageDown, 441}};
    for (const auto& step : steps) {
        keys.press(step.key);
        EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), step.a4) << "key " << step.key;
    }
    ASSERT_TRUE(keys.tabTo("reset"));
    keys.press(Qt::Key_Return);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::A4), 440);
    keys.press(Qt::Key_Escape);

    // Back with Enter, from the button as from Escape.
    ASSERT_TRUE(keys.tabTo("back"));
    keys.press(Qt::Key_Enter);
    EXPECT_EQ(rig.text("title"), "Veltra");

    // The review request, after enough visits to the settings and back.
    for (int visit = 0; visit < 12 && !rig.shown("review"); ++visit) {
        keys.press(Qt::Key_Comma, Qt::ControlModifier);
        rig.runMainQueue();
        keys.press(Qt::Key_Escape);
    }
    ASSERT_TRUE(rig.shown("review"));
    ASSERT_TRUE(keys.tabTo("accept"));
    keys.press(Qt::Key_Space);
    EXPECT_FALSE(rig.shown("review"));
    EXPECT_EQ(rig.opened.back(), ShareConfiguration::kRateAddress);
}

// A list reached by keyboard shows where the focus is: the ring around
// the focused row differs from the row's own colours by far more than a
// faint tint.
TEST_F(Screens, TheFocusedRowIsRingedClearly)
{
    UiRig rig;
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    Keyboard keys(rig);
    ASSERT_TRUE(keys.tabTo("sharpsOnly"));
    const QQuickItem* row = rig.item("sharpsOnly");
    const QRect rect = row->mapRectToScene(row->boundingRect()).toRect();
    const QImage image = rig.window->grabWindow();
    const QColor edge = image.pixelColor(rect.center().x(), rect.top() + 1);
    const QColor inside = image.pixelColor(rect.center().x(), rect.top() + 6);
    EXPECT_GT(edge.lightness() - inside.lightness(), 120) << "edge " << edge.name().toStdString() << ", inside "
                                                          << inside.name().toStdString();
    rig.screenshot("settings-keyboard-focus");
}

// The line that says listening has paused takes no room of its own when it
// comes: the graph stays where it was.
TEST_F(Screens, ThePausedLineMovesNothing)
{
    UiRig rig({390, 844});
    const auto graphTop = [&] { return rig.item("graph")->mapToScene(QPointF()).y(); };
    const double before = graphTop();
    rig.tuner->screen().setAudioState(AudioState::NoInput);
    rig.settle();
    ASSERT_TRUE(rig.shown("audioProblem"));
    EXPECT_EQ(graphTop(), before);
    rig.tuner->screen().setAudioState(AudioState::Running);
    rig.settle();
    EXPECT_FALSE(rig.shown("audioProblem"));
    EXPECT_EQ(graphTop(), before);
}

class Desktop : public InEveryLanguage {};

// A desktop window shows every screen and dialog whole in every language,
// nothing over anything else; the tuner and the settings are pictured in
// German and Japanese as <screen>-desktop-<language>.
TEST_P(Desktop, EveryScreenFitsInEveryLanguage)
{
    UiRig rig({1280, 800}, [](PreferenceStore& p) {
        p.setBool(true, PreferenceKey::PianoView);
        p.setBool(true, PreferenceKey::UseML);
    });
    rig.hear(sawtooth(196.0, 0.3, 1.5, 48000));
    visitEveryScreen(rig, [&](const std::string& screen, QQuickItem* root) {
        SCOPED_TRACE(screen);
        for (const std::string& fault : PageCheck(*rig.window, false).faults(root))
            ADD_FAILURE() << fault;
        if ((GetParam() == "de" || GetParam() == "ja") && (screen == "tuner" || screen == "settings"))
            rig.screenshot((screen + "-desktop-" + GetParam()).c_str());
    });
}

INSTANTIATE_TEST_SUITE_P(Languages, Desktop, ::testing::ValuesIn(everyLanguage()), InEveryLanguage::name);

// Started in a shipped language, the screens speak it: the titles, the
// footers with the chosen sounds, the readout's numbers and the sentence a
// screen reader hears, each number as the language writes it; note letters
// stay as they are. Started in a language the app does not ship,
// everything stays English.
TEST_F(Screens, ScreensSpeakTheLanguageTheyStartIn)
{
    struct Case {
        const char* locale;
        const char* installed;
        const char* settingsTitle;
        const char* soundsFooter;
        const char* readout; // a pattern
        const char* frequency;
    };
    for (const Case c : {
             Case{"de_DE", "de", "Einstellungen", "Ausgewählte Klänge: Gitarre, Geige, Klavier und Stimme.",
                  "^G 3, .+, \\d+,\\d Hertz$", "^\\d+,\\d Hz$"},
             Case{"ja_JP", "ja", "設定", "選択した音：ギター、バイオリン、ピアノと声。", "^G 3、.+、\\d+\\.\\d ヘルツ$",
                  "^\\d+\\.\\d Hz$"},
             Case{"ru_RU", "ru", "Настройки", "Выбранные звуки: гитара, скрипка, фортепиано и голос.",
                  "^G 3, .+, \\d+,\\d герца$", "^\\d+,\\d Гц$"},
             Case{"sv_SE", "en", "Settings", "Selected Sounds: Guitar, Violin, Piano and Voice.",
                  "^G 3, .+, \\d+\\.\\d hertz$", "^\\d+\\.\\d Hz$"},
         }) {
        SCOPED_TRACE(c.locale);
        EXPECT_EQ(Translations::use(QLocale(QString::fromLatin1(c.locale))), c.installed);
        UiRig rig({420, 860}, [](PreferenceStore& p) {
            p.setBool(true, PreferenceKey::UseML);
            for (const std::string_view sound : {PreferenceKey::SoundsViolin, PreferenceKey::SoundsPiano,
                                                 PreferenceKey::SoundsVoice})
                p.setBool(true, sound);
        });
        rig.hear(sawtooth(196.0, 0.3, 1.5, 48000));
        EXPECT_EQ(rig.text("noteName"), "G");
        EXPECT_TRUE(QRegularExpression(QString::fromUtf8(c.readout)).match(rig.tunerScreen->readout()).hasMatch())
            << rig.tunerScreen->readout().toStdString();
        EXPECT_TRUE(QRegularExpression(QString::fromUtf8(c.frequency)).match(rig.text("frequency")).hasMatch())
            << rig.text("frequency").toStdString();
        rig.screens->navigation()->push(QStringLiteral("Settings"));
        rig.settle();
        EXPECT_EQ(rig.text("title"), QString::fromUtf8(c.settingsTitle));
        EXPECT_EQ(rig.screens->settings()->footers().value(10), QString::fromUtf8(c.soundsFooter));
    }
    Translations::use(QLocale(QLocale::English));
}

} // namespace
} // namespace veltra::test
