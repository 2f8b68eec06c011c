#include "support/PageCheck.h"
#include "support/UiRig.h"

#include "settings/Preferences.h"
#include "tuning/Temperament.h"

#include <QAccessible>
#include <QUrl>

#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <fstream>

namespace veltra::test {
namespace {

class TuningSections : public InEveryLanguage {};

// The tuning sections at the end of the settings: the choices reach the
// preferences, the controls show what is stored, and a Scala file that
// cannot be used is refused in one line while the choice stays; the
// sections fit the window. Pictured in English and German.
TEST_P(TuningSections, ChoicesReachThePreferencesAndShowWhatIsStored)
{
    UiRig rig({420, 860});
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    TuningSettingsScreen& tuning = *rig.screens->tuning();
    EXPECT_FALSE(rig.preferences.hasValue(PreferenceKey::Temperament));
    EXPECT_EQ(tuning.temperamentCount(), 9); // no imported scale yet

    tuning.setTemperament(4);
    tuning.setTonic(2);
    rig.item("instrumentKey")->forceActiveFocus();
    rig.settle();
    tuning.setKeySegment(1);
    tuning.importScala(QStringLiteral("/nonexistent/scale.scl"));
    rig.settle();
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Temperament), 4);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Tonic), 2);
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Transpose), -2);
    EXPECT_EQ(rig.item("temperament")->property("currentIndex").toInt(), 4);
    EXPECT_EQ(rig.item("transpose")->property("value").toInt(), -2);
    EXPECT_TRUE(rig.shown("importProblem"));
    EXPECT_TRUE(tuning.importProblem().endsWith(QStringLiteral("/nonexistent/scale.scl: no such file")));
    for (const std::string& fault : PageCheck(*rig.window, false).faults(rig.item("settingsPage")))
        ADD_FAILURE() << fault;
    // Pictured from the tuning section's top, both sections in sight.
    QQuickItem* section = rig.item("tuningSection");
    QQuickItem* list = section->parentItem();
    while (!list->inherits("QQuickFlickable"))
        list = list->parentItem();
    const double top = section->mapToItem(list->property("contentItem").value<QQuickItem*>(), QPointF()).y();
    list->setProperty("contentY", top - 12);
    rig.settle();
    EXPECT_LE(rig.item("transpose")->mapToScene(QPointF(0, rig.item("transpose")->height())).y(),
              rig.window->height());
    rig.screenshot(("settings-tuning" + std::string(GetParam() == "de" ? "-de" : "")).c_str());
}

// Import opens a file chooser; a scale chosen there becomes the tuning
// system, and a file that cannot be used keeps it and says why in one line.
// The chooser opens from the keyboard as well.
TEST_P(TuningSections, AScaleChosenInTheFileChooserBecomesTheTuning)
{
    const auto dir = std::filesystem::temp_directory_path() / ("veltra-scales-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    std::ofstream(dir / "just.scl") << "! just.scl\nFive-limit just intonation\n12\n16/15\n9/8\n6/5\n5/4\n4/3\n"
                                       "45/32\n3/2\n8/5\n5/3\n9/5\n15/8\n2/1\n";
    std::ofstream(dir / "five.scl") << "Five\n5\n9/8\n5/4\n3/2\n5/3\n2/1\n";

    UiRig rig({420, 860});
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    QObject* chooser = rig.window->findChild<QObject*>(QStringLiteral("scalaFileDialog"));
    ASSERT_TRUE(chooser) << "no file chooser";
    // The chooser as it draws itself in the window, where no native one is at hand.
    const auto choose = [&](const std::filesystem::path& file) {
        EXPECT_TRUE(chooser->property("visible").toBool());
        QObject* shown = nullptr;
        for (QObject* o : rig.window->findChildren<QObject*>())
            if (o->inherits("QQuickFileDialogImpl"))
                shown = o;
        ASSERT_TRUE(shown) << "the file chooser is not drawn";
        EXPECT_TRUE(shown->property("opened").toBool());
        shown->setProperty("selectedFile", QUrl::fromLocalFile(QString::fromStdString(file.string())));
        QMetaObject::invokeMethod(shown, "accept");
        rig.settle();
    };
    rig.click("importScala");
    choose(dir / "just.scl");
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Temperament), static_cast<int>(Temperament::Imported));
    EXPECT_NEAR(rig.preferences.doubleForKey(kScaleCentsKeys[3]), 386.31, 0.01); // 5/4
    EXPECT_FALSE(rig.shown("importProblem"));
    EXPECT_EQ(rig.item("temperament")->property("currentIndex").toInt(), static_cast<int>(Temperament::Imported));

    rig.item("importScala")->forceActiveFocus(Qt::TabFocusReason);
    rig.key(Qt::Key_Return);
    choose(dir / "five.scl");
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Temperament), static_cast<int>(Temperament::Imported));
    EXPECT_NEAR(rig.preferences.doubleForKey(kScaleCentsKeys[3]), 386.31, 0.01);
    EXPECT_TRUE(rig.shown("importProblem"));
    const QString problem = rig.text("importProblem");
    EXPECT_TRUE(problem.contains(QStringLiteral("five.scl"))) << problem.toStdString();
    EXPECT_FALSE(problem.contains('\n')) << problem.toStdString();
    std::filesystem::remove_all(dir);
}

// A B flat instrument hears concert C4 as written D4, with the concert note
// on a line under the readout and in the sentence a screen reader speaks;
// the line is there from the start, so the graph does not move when the
// first note comes. At concert pitch there is no such line.
TEST_P(TuningSections, ATransposedReadoutShowsAndSpeaksTheConcertNote)
{
    const auto spoken = [](QQuickItem* item) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
        return accessible ? accessible->text(QAccessible::Name) : QString();
    };
    const bool german = GetParam() == "de";
    {
        UiRig rig({390, 844}, [](PreferenceStore& p) { p.setInteger(-2, PreferenceKey::Transpose); });
        ASSERT_TRUE(rig.shown("concertNote"));
        const double graphTop = rig.item("graph")->mapToScene(QPointF()).y();
        rig.hear(sine(261.63, 0.3, 1.5, 48000));
        EXPECT_EQ(rig.text("noteName"), "D");
        EXPECT_EQ(rig.text("octaveNumber"), "4");
        EXPECT_EQ(rig.text("concertNote"), german ? "klingend C4" : "concert C4");
        EXPECT_EQ(spoken(rig.item("readout")), german ? "D 4, sauber gestimmt, 261,6 Hertz, klingend C 4"
                                                      : "D 4, in tune, 261.6 hertz, concert C 4");
        EXPECT_EQ(rig.item("graph")->mapToScene(QPointF()).y(), graphTop);
        rig.screenshot(german ? "tuner-transposed-de" : "tuner-transposed");
        rig.hear(sine(277.18, 0.3, 1.5, 48000));
        EXPECT_EQ(rig.text("concertNote"), german ? "klingend C\u266F4" : "concert C\u266F4");
        EXPECT_TRUE(spoken(rig.item("readout")).endsWith(german ? "klingend C Kreuz 4" : "concert C sharp 4"));
    }
    UiRig concert({390, 844});
    concert.hear(sine(261.63, 0.3, 1.5, 48000));
    EXPECT_EQ(concert.text("noteName"), "C");
    EXPECT_FALSE(concert.shown("concertNote"));
    EXPECT_FALSE(spoken(concert.item("readout")).contains(german ? "klingend" : "concert"));
}

// From the tuning system on, Tab reaches every control of both sections in
// order, each in sight with a name a screen reader says ("B flat", not the
// sign), and Enter works the import and the instrument key.
TEST_P(TuningSections, EveryControlIsReachedByTabAndNamed)
{
    const auto spoken = [](QQuickItem* item) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
        return accessible ? accessible->text(QAccessible::Name) : QString();
    };
    // The first item of a kind inside another, depth first.
    const std::function<QQuickItem*(QQuickItem*, const char*)> inside = [&](QQuickItem* item, const char* kind) {
        for (QQuickItem* child : item->childItems()) {
            if (child->inherits(kind))
                return child;
            if (QQuickItem* found = inside(child, kind))
                return found;
        }
        return static_cast<QQuickItem*>(nullptr);
    };
    UiRig rig({420, 860});
    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    QQuickItem* transpose = rig.item("transpose");
    const auto onTranspose = [&] { return transpose->hasActiveFocus(); };
    inside(rig.item("temperament"), "QQuickComboBox")->forceActiveFocus(Qt::TabFocusReason);
    QStringList names;
    for (int press = 0; press < 12 && !onTranspose(); ++press) {
        rig.key(Qt::Key_Tab);
        QQuickItem* focused = rig.window->activeFocusItem();
        names << spoken(focused);
        const QPointF bottom = focused->mapToScene(QPointF(0, focused->height()));
        EXPECT_TRUE(focused->mapToScene(QPointF()).y() >= 0 && bottom.y() <= rig.window->height())
            << names.last().toStdString() << " is out of sight";
    }
    const bool german = GetParam() == "de";
    const QStringList expected{german ? "Grundton" : "Tonic",
                               german ? "Scala-Datei importieren\u2026" : "Import Scala File\u2026",
                               german ? "C (klingend)" : "C (concert)",
                               german ? "B b" : "B flat",
                               german ? "E b" : "E flat",
                               "F"};
    EXPECT_EQ(names.mid(0, static_cast<int>(expected.size())), expected);
    EXPECT_TRUE(onTranspose()) << names.join(QStringLiteral(", ")).toStdString();

    inside(rig.item("instrumentKey"), "QQuickRadioButton")->forceActiveFocus(Qt::TabFocusReason);
    rig.key(Qt::Key_Tab);
    rig.key(Qt::Key_Return); // B flat
    EXPECT_EQ(rig.preferences.integerForKey(PreferenceKey::Transpose), -2);
}

INSTANTIATE_TEST_SUITE_P(Languages, TuningSections, ::testing::Values("en", "de"), InEveryLanguage::name);

} // namespace
} // namespace veltra::test
