#pragma once

#include "settings/Controls.h"
#include "settings/PreferenceStore.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace veltra {

// The main screen's options menu (rate, more apps, share, contact) and the
// one-time request to rate the app. The desktop's services come in as
// functions, so that tests can stand in for them.
class MoreOptionsMenu {
public:
    struct ShareSheet {
        std::string text;
        std::string link; // empty when the configured link is no valid address
    };

    struct Platform {
        // Hands an address to the desktop's handler; false when none took it.
        std::function<bool(const std::string& address)> openURL;
        std::function<void(const ShareSheet&)> presentShareSheet;
        // Whether the desktop has a mail program to compose in.
        std::function<bool()> canSendMail;
        std::function<void(const Alert&)> presentAlert;
        // Asks the user, in the app's window, to rate the app; false when
        // there is no window to ask in.
        std::function<bool()> requestReview;
        MainQueue mainQueue;
    };

    struct MenuAction {
        std::string title;
        std::string image; // a symbol name; the view layer draws it
        std::function<void()> handler;
    };

    MoreOptionsMenu(PreferenceStore& preferences, Platform platform);

    void setupMoreOptionsMenu();
    const std::vector<MenuAction>& menu() const { return menu_; }

    // Counts an appearance of the main screen; asks for a rating once, on
    // the eleventh.
    void checkRatePrompt();

    void openLink(const std::string& address);
    void shareApp();
    void contactUs();

    // The mailto address that opens a draft to support.
    static std::string contactAddress();

    static constexpr std::string_view kLaunchCount = "LaunchCount";
    static constexpr std::string_view kRatePromptShown = "RatePromptShown";
    static constexpr std::int64_t kAppearancesBeforeReview = 11;

private:
    PreferenceStore& preferences_;
    Platform platform_;
    std::vector<MenuAction> menu_;
};

} // namespace veltra
