#include "settings/MemoryPreferenceStore.h"
#include "share/MoreOptionsMenu.h"
#include "share/ShareConfiguration.h"
#include "support/ManualMainQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltra {
namespace {

using ::testing::ElementsAre;

// The menu with the desktop's services recorded: opened addresses, sheets,
// alerts and review requests; the test decides whether a mail program and
// a window exist.
struct MenuFixture : ::testing::Test {
    MemoryPreferenceStore store;
    test::ManualMainQueue mainQueue;
    std::vector<std::string> opened;
    std::vector<MoreOptionsMenu::ShareSheet> sheets;
    std::vector<Alert> alerts;
    int reviewRequests = 0;
    bool hasMail = true, handlerTakesIt = true, hasWindow = true;

    MoreOptionsMenu menu{store,
                         {
                             .openURL =
                                 [this](const std::string& address) {
                                     opened.push_back(address);
                                     return handlerTakesIt;
                                 },
                             .presentShareSheet = [this](const auto& sheet) { sheets.push_back(sheet); },
                             .canSendMail = [this] { return hasMail; },
                             .presentAlert = [this](const Alert& alert) { alerts.push_back(alert); },
                             .requestReview =
                                 [this] {
                                     reviewRequests += hasWindow;
                                     return hasWindow;
                                 },
                             .mainQueue = [this](auto task) { mainQueue.post(std::move(task)); },
                         }};

    void choose(const std::string& title)
    {
        for (const auto& action : menu.menu())
            if (action.title == title)
                return action.handler();
        FAIL() << "no menu entry " << title;
    }
};

TEST_F(MenuFixture, FourEntriesInOrderLeadWhereConfigured)
{
    menu.setupMoreOptionsMenu();
    std::vector<std::pair<std::string, std::string>> entries;
    for (const auto& action : menu.menu())
        entries.emplace_back(action.title, action.image);
    EXPECT_THAT(entries, ElementsAre(std::pair<std::string, std::string>{"Rate this App", "star"},
                                     std::pair<std::string, std::string>{"More Apps", "ellipsis"},
                                     std::pair<std::string, std::string>{"Share this App", "square.and.arrow.up"},
                                     std::pair<std::string, std::string>{"Contact Us", "envelope"}));

    choose("Rate this App");
    choose("More Apps");
    EXPECT_THAT(opened, ElementsAre(ShareConfiguration::kRateAddress, ShareConfiguration::kMoreAppsAddress));

    choose("Share this App");
    EXPECT_TRUE(sheets.empty()) << "the sheet comes after the current work";
    mainQueue.runAll();
    ASSERT_EQ(sheets.size(), 1u);
    EXPECT_EQ(sheets[0].text, std::string("I've been using this great instrument tuner app by ") +
                                  ShareConfiguration::kSocialHandle +
                                  " called Veltra for iOS. Check it out! #tuner #ios");
    EXPECT_EQ(sheets[0].link, ShareConfiguration::kShareLink);
}

TEST_F(MenuFixture, ContactOpensADraftOrExplainsWhyNot)
{
    menu.setupMoreOptionsMenu();
    choose("Contact Us");
    mainQueue.runAll();
    EXPECT_THAT(opened, ElementsAre("mailto:" + std::string(ShareConfiguration::kSupportAddress) +
                                    "?subject=Veltra%20Pro%20-%20Query"));
    EXPECT_TRUE(alerts.empty());

    struct Case {
        bool hasMail, handlerTakesIt;
    };
    for (const Case c : {Case{false, true}, Case{true, false}}) {
        hasMail = c.hasMail;
        handlerTakesIt = c.handlerTakesIt;
        alerts.clear();
        choose("Contact Us");
        mainQueue.runAll();
        ASSERT_EQ(alerts.size(), 1u);
        EXPECT_EQ(alerts[0].title, "Email Unavailable");
        EXPECT_EQ(alerts[0].message, "You cannot send emails from this device.");
        EXPECT_EQ(alerts[0].dismissTitle, "Cancel");
    }
}

TEST_F(MenuFixture, ReviewIsRequestedOnTheEleventhAppearanceAndNeverAgain)
{
    for (int appearance = 1; appearance <= 10; ++appearance)
        menu.checkRatePrompt();
    EXPECT_EQ(reviewRequests, 0);
    EXPECT_EQ(store.integerForKey(MoreOptionsMenu::kLaunchCount), 10);

    menu.checkRatePrompt();
    EXPECT_EQ(reviewRequests, 1);
    EXPECT_TRUE(store.boolForKey(MoreOptionsMenu::kRatePromptShown));
    for (int appearance = 12; appearance <= 30; ++appearance)
        menu.checkRatePrompt();
    EXPECT_EQ(reviewRequests, 1);
    EXPECT_EQ(store.integerForKey(MoreOptionsMenu::kLaunchCount), 30);
}

TEST_F(MenuFixture, WithoutAWindowTheRequestWaitsForTheNextAppearance)
{
    store.setInteger(10, MoreOptionsMenu::kLaunchCount);
    hasWindow = false;
    menu.checkRatePrompt();
    EXPECT_FALSE(store.boolForKey(MoreOptionsMenu::kRatePromptShown));
    EXPECT_EQ(store.integerForKey(MoreOptionsMenu::kLaunchCount), 11);
    hasWindow = true;
    menu.checkRatePrompt();
    EXPECT_EQ(reviewRequests, 1);
    EXPECT_TRUE(store.boolForKey(MoreOptionsMenu::kRatePromptShown));
}

} // namespace
} // namespace veltra
