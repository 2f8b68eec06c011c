#pragma once

#include "app/ViewController.h"
#include "app/qt/Translations.h"
#include "support/UiRig.h"

#include <QFontInfo>

#include <functional>
#include <string>
#include <vector>

namespace veltra::test {

// About 7 mm: the smallest target a fingertip hits reliably, in logical
// pixels (Android's 48 dp and Apple's 44 pt are the same size on glass).
constexpr double kSmallestTarget = 44.0;
// The smallest text a phone's own interface uses for captions.
constexpr double kSmallestTextPixels = 12.0;
// Layouts round positions to whole device pixels.
constexpr double kRounding = 0.5;

// What is wrong with a page or a dialog as it lies in the window, one line
// a fault: a control or text cut off by the window's edge, a text cut
// short or wider than its place, two parts on top of each other, and (with
// touch) a control too small for a finger or a text too small to read.
class PageCheck {
public:
    explicit PageCheck(QQuickWindow& window, bool touch = true)
        : window_(QRectF(QPointF(), window.size())), touch_(touch)
    {
    }

    std::vector<std::string> faults(QQuickItem* root)
    {
        faults_.clear();
        parts_.clear();
        visit(root, false, nullptr, false);
        for (std::size_t i = 0; i < parts_.size(); ++i)
            for (std::size_t j = i + 1; j < parts_.size(); ++j)
                checkApart(parts_[i], parts_[j]);
        return faults_;
    }

private:
    struct Part {
        QQuickItem* item;
        QRectF rect;
    };

    static bool interactive(const QQuickItem& item)
    {
        return item.inherits("QQuickAbstractButton") || item.inherits("QQuickSlider") ||
               item.inherits("QQuickTumbler");
    }
    static std::string name(const QQuickItem& item)
    {
        const QString text = item.property("text").toString();
        return std::string(item.metaObject()->className()) + " " + item.objectName().toStdString() +
               (text.isEmpty() ? "" : " \"" + text.toStdString() + "\"");
    }
    void fault(const QQuickItem& item, const std::string& what) { faults_.push_back(name(item) + ": " + what); }

    // scroller: the nearest Flickable above; its content may lie outside the
    // window and be scrolled in, but it must keep within the window across.
    void visit(QQuickItem* item, bool inControl, QQuickItem* scroller, bool insideWheel)
    {
        if (!item->isVisible() || item->opacity() <= 0.0)
            return;
        const QRectF rect = item->mapRectToScene(item->boundingRect());
        const bool control = interactive(*item);
        const bool text = item->inherits("QQuickText") && !item->property("text").toString().trimmed().isEmpty();
        if (touch_ && control && !inControl && rect.height() < kSmallestTarget - kRounding)
            fault(*item, "only " + std::to_string(rect.height()) + " px high for a finger");
        if ((control || item->inherits("QQuickText")) && !insideWheel && rect.width() > 0)
            checkInside(*item, rect, scroller);
        if (text && !insideWheel)
            checkText(*item);
        // The parts that must not lie on each other: the controls, the texts
        // outside them, and the graph and the keyboard.
        const bool drawing = item->objectName() == QLatin1String("graph") || item->objectName() == QLatin1String("piano");
        if (!inControl && !insideWheel && (control || text || drawing))
            parts_.push_back({item, rect});
        const bool flickable = item->inherits("QQuickFlickable");
        for (QQuickItem* child : item->childItems())
            visit(child, inControl || control, flickable ? item : scroller,
                  insideWheel || item->inherits("QQuickTumbler"));
    }
    void checkInside(const QQuickItem& item, const QRectF& rect, QQuickItem* scroller)
    {
        const QRectF bounds =
            scroller ? scroller->mapRectToScene(scroller->boundingRect()).intersected(window_) : window_;
        const bool across = rect.left() >= bounds.left() - kRounding && rect.right() <= bounds.right() + kRounding;
        const bool down =
            scroller || (rect.top() >= bounds.top() - kRounding && rect.bottom() <= bounds.bottom() + kRounding);
        if (!across || !down)
            fault(item, "cut off by the window's edge");
    }
    void checkText(const QQuickItem& item)
    {
        if (touch_ && item.property("font").value<QFont>().pixelSize() < kSmallestTextPixels &&
            QFontInfo(item.property("font").value<QFont>()).pixelSize() < kSmallestTextPixels)
            fault(item, "text too small to read");
        if (item.property("truncated").toBool())
            fault(item, "text cut short");
        if (item.property("contentWidth").toDouble() > item.width() + 1.0)
            fault(item, "text wider than its place");
        if (item.property("contentHeight").toDouble() > item.height() + 1.0)
            fault(item, "text taller than its place");
    }
    void checkApart(const Part& a, const Part& b)
    {
        if (a.item->isAncestorOf(b.item) || b.item->isAncestorOf(a.item))
            return;
        const QRectF common = a.rect.intersected(b.rect);
        if (common.width() > 1.0 && common.height() > 1.0)
            faults_.push_back(name(*a.item) + " overlaps " + name(*b.item));
    }

    QRectF window_;
    bool touch_;
    std::vector<std::string> faults_;
    std::vector<Part> parts_;
};

// Shows every screen and dialog of the window in turn and calls check with
// its name and the item that holds it (the page, or the open dialog).
// Each is checked once its transition is over, however long a loaded
// machine takes: a page sliding in lies over the one it covers.
inline void visitEveryScreen(UiRig& rig, const std::function<void(const std::string&, QQuickItem*)>& check)
{
    constexpr int kLongestTransitionMs = 10000;
    const auto page = [&](const char* name) {
        const QQuickItem* stack = rig.item("stack");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !stack->property("busy").toBool(); }, kLongestTransitionMs))
            << name << " is still sliding in";
        check(name, rig.window->contentItem());
    };
    const auto popup = [&](const char* objectName, const char* name) {
        auto* dialog = rig.window->findChild<QObject*>(QString::fromLatin1(objectName));
        if (!dialog ||
            !QTest::qWaitFor([&] { return dialog->property("opened").toBool(); }, kLongestTransitionMs)) {
            ADD_FAILURE() << name << " is not open";
            return;
        }
        check(name, dialog->property("contentItem").value<QQuickItem*>()->parentItem());
        QMetaObject::invokeMethod(dialog, "close");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog->property("visible").toBool(); }, kLongestTransitionMs))
            << name << " does not close";
    };
    page("tuner");
    rig.click("moreOptions");
    popup("optionsMenu", "menu");

    rig.screens->navigation()->push(QStringLiteral("Settings"));
    rig.settle();
    page("settings");
    rig.screens->navigation()->push(QStringLiteral("FrequencyPicker"));
    rig.settle();
    page("frequency");
    rig.key(Qt::Key_Escape);
    rig.screens->navigation()->push(QStringLiteral("SelectSounds"));
    rig.settle();
    page("select-sounds");
    rig.key(Qt::Key_Escape);
    rig.key(Qt::Key_Escape);

    // The dialogs with the most words: the review request, the share
    // sheet, and the alerts of the menu and of the microphone.
    QMetaObject::invokeMethod(rig.window->findChild<QObject*>(QStringLiteral("review")), "open");
    rig.settle();
    popup("review", "review");
    rig.screens->moreOptions()->menu().shareApp();
    rig.settle();
    popup("share", "share");
    rig.hasMailHandler = false;
    rig.screens->moreOptions()->menu().contactUs();
    rig.settle();
    popup("alert", "alert");
    // The microphone alert as the tuner words it when no input may be used
    // (the rig's tuner always has its input).
    emit rig.tunerScreen->alert(QCoreApplication::translate("Tuner", ViewController::kMicrophoneTitle),
                                QCoreApplication::translate("Tuner", ViewController::kMicrophoneMessage),
                                QCoreApplication::translate("Tuner", ViewController::kMicrophoneDismiss));
    rig.settle();
    popup("alert", "microphone-alert");
}

// The shipped languages, and English, the source language.
inline std::vector<std::string> everyLanguage()
{
    UiRig::ensureApplication();
    std::vector<std::string> languages{"en"};
    for (const QString& language : Translations::shipped())
        languages.push_back(language.toStdString());
    return languages;
}

// A test run once in each language (its parameter: "en", "de", "pt_BR"),
// installed around the run; English again after it.
class InEveryLanguage : public ::testing::TestWithParam<std::string> {
public:
    static std::string name(const ::testing::TestParamInfo<std::string>& info) { return info.param; }

protected:
    static void SetUpTestSuite() { UiRig::ensureApplication(); }
    void SetUp() override
    {
        ASSERT_EQ(Translations::use(QLocale(QString::fromStdString(GetParam()))).toStdString(), GetParam());
    }
    void TearDown() override { Translations::use(QLocale(QLocale::English)); }
};

} // namespace veltra::test
