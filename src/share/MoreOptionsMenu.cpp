#include "share/MoreOptionsMenu.h"

#include "settings/Fatal.h"
#include "settings/Localization.h"
#include "share/ShareConfiguration.h"

#include <cstdio>

namespace veltra {

namespace {

constexpr const char* kMailSubject = "Veltra Pro - Query";

// Percent-encodes everything but the characters a URL query may carry as
// they are.
std::string percentEncoded(std::string_view text)
{
    std::string encoded;
    for (const unsigned char c : text) {
        const bool plain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                           c == '-' || c == '.' || c == '_' || c == '~';
        if (plain) {
            encoded += static_cast<char>(c);
        } else {
            char escape[4];
            std::snprintf(escape, sizeof escape, "%%%02X", c);
            encoded += escape;
        }
    }
    return encoded;
}

// An address the desktop can be handed: a scheme, a colon and something after it.
bool isValidAddress(std::string_view address)
{
    const auto colon = address.find(':');
    return colon != std::string_view::npos && colon > 0 && colon + 1 < address.size() &&
           address.find(' ') == std::string_view::npos;
}

} // namespace

MoreOptionsMenu::MoreOptionsMenu(PreferenceStore& preferences, Platform platform)
    : preferences_(preferences), platform_(std::move(platform))
{
}

void MoreOptionsMenu::setupMoreOptionsMenu()
{
    menu_ = {
        {translate("Menu", "Rate this App"), "star", [this] { openLink(ShareConfiguration::kRateAddress); }},
        {translate("Menu", "More Apps"), "ellipsis", [this] { openLink(ShareConfiguration::kMoreAppsAddress); }},
        {translate("Menu", "Share this App"), "square.and.arrow.up", [this] { shareApp(); }},
        {translate("Menu", "Contact Us"), "envelope", [this] { contactUs(); }},
    };
}

void MoreOptionsMenu::checkRatePrompt()
{
    if (!preferences_.hasValue(kLaunchCount))
        preferences_.setInteger(0, kLaunchCount);
    std::int64_t count = 0;
    if (__builtin_add_overflow(preferences_.integerForKey(kLaunchCount), 1, &count))
        fatalError("the appearance count overflowed");
    preferences_.setInteger(count, kLaunchCount);
    if (count < kAppearancesBeforeReview || preferences_.boolForKey(kRatePromptShown))
        return;
    // Without a window to ask in, the next appearance tries again.
    if (platform_.requestReview())
        preferences_.setBool(true, kRatePromptShown);
}

void MoreOptionsMenu::openLink(const std::string& address)
{
    if (isValidAddress(address))
        platform_.openURL(address);
}

void MoreOptionsMenu::shareApp()
{
    //: What a user shares about the app; %1 is the makers' social-media handle.
    ShareSheet sheet{fillIn(translate("Menu", "I've been using this great instrument tuner app by %1 called Veltra "
                                              "for iOS. Check it out! #tuner #ios"),
                            {ShareConfiguration::kSocialHandle}),
                     isValidAddress(ShareConfiguration::kShareLink) ? ShareConfiguration::kShareLink : ""};
    platform_.mainQueue([this, sheet] { platform_.presentShareSheet(sheet); });
}

std::string MoreOptionsMenu::contactAddress()
{
    return std::string("mailto:") + ShareConfiguration::kSupportAddress + "?subject=" + percentEncoded(kMailSubject);
}

void MoreOptionsMenu::contactUs()
{
    // The desktop's mail program is the composer; the alert comes when there
    // is none, or when it does not take the draft.
    if (platform_.canSendMail() && platform_.openURL(contactAddress()))
        return;
    Alert alert{translate("Menu", "Email Unavailable"), translate("Menu", "You cannot send emails from this device."),
                translate("Menu", "Cancel")};
    platform_.mainQueue([this, alert] { platform_.presentAlert(alert); });
}

} // namespace veltra
