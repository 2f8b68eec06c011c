#pragma once

#include "app/NavigationController.h"
#include "app/qt/InputScreens.h"
#include "app/qt/SettingsScreens.h"
#include "app/qt/TuningSettingsScreen.h"
#include "share/MoreOptionsMenu.h"
#include "share/ShareConfiguration.h"

#include <QObject>
#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace veltra {

// The names of the screens on the navigation stack.
namespace ScreenName {
inline constexpr const char* Tuner = "Tuner";
inline constexpr const char* Settings = "Settings";
inline constexpr const char* FrequencyPicker = "FrequencyPicker";
inline constexpr const char* SelectSounds = "SelectSounds";
} // namespace ScreenName

// The navigation stack for QML: the StackView follows the pushed and popped
// screens, and the main screen is told each time it appears again.
class NavigationScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Navigation)
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(int depth READ depth NOTIFY changed)

public:
    NavigationScreen(NavigationController& navigation, std::function<void()> rootAppeared,
                     QObject* parent = nullptr);

    int depth() const { return static_cast<int>(navigation_.stack().size()); }
    Q_INVOKABLE void push(const QString& screen);
    Q_INVOKABLE void pop();

signals:
    void changed();
    void pushed(const QString& screen);
    void popped();

private:
    NavigationController& navigation_;
    std::function<void()> rootAppeared_;
};

// The desktop's services that the menu uses; tests stand in for them.
struct DesktopServices {
    std::function<bool(const QUrl&)> openUrl;
    // Whether a mail program is registered for mailto addresses.
    std::function<bool()> hasMailHandler;
    std::function<void(const QString&)> copyToClipboard;
};

// The options menu, the share sheet, the contact alert and the review
// request for QML.
class MoreOptionsScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(MoreOptions)
    QML_UNCREATABLE("made by the application")
    // The menu is built while the main screen loads, before any QML.
    Q_PROPERTY(QVariantList entries READ entries CONSTANT)

public:
    MoreOptionsScreen(PreferenceStore& preferences, DesktopServices services, QObject* parent = nullptr);

    MoreOptionsMenu& menu() { return menu_; }
    QVariantList entries() const;
    // Whether there is a shown window to ask for a rating in.
    void setHasWindow(std::function<bool()> hasWindow) { hasWindow_ = std::move(hasWindow); }

    Q_INVOKABLE void trigger(int index);
    Q_INVOKABLE void copy(const QString& text) { services_.copyToClipboard(text); }
    Q_INVOKABLE void rate() { menu_.openLink(ShareConfiguration::kRateAddress); }

signals:
    void shareSheet(const QString& text, const QString& link);
    void alert(const QString& title, const QString& message, const QString& dismissTitle);
    void reviewRequested();

private:
    DesktopServices services_;
    std::function<bool()> hasWindow_;
    MoreOptionsMenu menu_;
};

class ViewController;

// Every screen but the main one (which QML sees as the Tuner singleton):
// their logic, their QML faces and the navigation stack between them.
class AppScreens : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Screens)
    QML_SINGLETON
    Q_PROPERTY(veltra::NavigationScreen* navigation READ navigation CONSTANT)
    Q_PROPERTY(veltra::SettingsScreen* settings READ settings CONSTANT)
    Q_PROPERTY(veltra::FrequencyPickerScreen* picker READ picker CONSTANT)
    Q_PROPERTY(veltra::SelectSoundsScreen* sounds READ sounds CONSTANT)
    Q_PROPERTY(veltra::MoreOptionsScreen* moreOptions READ moreOptions CONSTANT)
    Q_PROPERTY(veltra::InputSettingsScreen* inputs READ inputs CONSTANT)
    Q_PROPERTY(veltra::HeardReferenceScreen* heardReference READ heardReference CONSTANT)
    Q_PROPERTY(veltra::TuningSettingsScreen* tuning READ tuning CONSTANT)

public:
    struct Dependencies {
        PreferenceStore& preferences;
        NotificationCenter& notifications;
        DesktopServices desktop;
        bool soundClassifierAvailable = true;
        std::function<bool(const std::string& family, double size)> fontAvailable;
        // The sound system's devices, for the choice of input.
        InputChoiceController::DeviceList inputDevices = [] { return std::vector<AudioDevice>(); };
    };

    explicit AppScreens(Dependencies dependencies, QObject* parent = nullptr);

    // Lets the main screen open the settings and hear of its appearances.
    void attach(ViewController& tuner);

    NavigationScreen* navigation() { return &navigationScreen_; }
    SettingsScreen* settings() { return &settingsScreen_; }
    FrequencyPickerScreen* picker() { return &pickerScreen_; }
    SelectSoundsScreen* sounds() { return &soundsScreen_; }
    MoreOptionsScreen* moreOptions() { return &moreOptions_; }
    InputSettingsScreen* inputs() { return &inputsScreen_; }
    HeardReferenceScreen* heardReference() { return &heardReferenceScreen_; }
    TuningSettingsScreen* tuning() { return &tuningScreen_; }
    const NavigationController& navigationController() const { return navigation_; }

    // The instance QML sees; set once before QML loads.
    static void setInstance(AppScreens* instance);
    static AppScreens* create(QQmlEngine*, QJSEngine*);

private:
    NavigationController navigation_{ScreenName::Tuner};
    SettingsTableViewController settings_;
    FrequencyTableViewController picker_;
    SelectSoundsTableViewController sounds_;
    ViewController* tuner_ = nullptr;
    NavigationScreen navigationScreen_;
    SettingsScreen settingsScreen_;
    FrequencyPickerScreen pickerScreen_;
    SelectSoundsScreen soundsScreen_;
    MoreOptionsScreen moreOptions_;
    InputChoiceController inputs_;
    InputSettingsScreen inputsScreen_;
    ReferenceCapture capture_;
    bool captureHears_ = false; // among the patch's listeners
    HeardReferenceScreen heardReferenceScreen_;
    TuningSettingsScreen tuningScreen_;
};

} // namespace veltra
