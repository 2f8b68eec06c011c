#include "app/qt/AppScreens.h"

#include "app/ViewController.h"

#include <QJSEngine>
#include <QVariantMap>

namespace veltra {

namespace {
AppScreens* gInstance = nullptr;
} // namespace

NavigationScreen::NavigationScreen(NavigationController& navigation, std::function<void()> rootAppeared,
                                   QObject* parent)
    : QObject(parent), navigation_(navigation), rootAppeared_(std::move(rootAppeared))
{
}

void NavigationScreen::push(const QString& screen)
{
    navigation_.pushScreen(screen.toStdString());
    emit pushed(screen);
    emit changed();
}

void NavigationScreen::pop()
{
    if (depth() < 2)
        return;
    navigation_.popScreen();
    emit popped();
    emit changed();
    if (depth() == 1 && rootAppeared_)
        rootAppeared_();
}

MoreOptionsScreen::MoreOptionsScreen(PreferenceStore& preferences, DesktopServices services, QObject* parent)
    : QObject(parent)
    , services_(std::move(services))
    , menu_(preferences,
            {
                .openURL = [this](const std::string& address) {
                    return services_.openUrl(QUrl(QString::fromStdString(address)));
                },
                .presentShareSheet = [this](const MoreOptionsMenu::ShareSheet& sheet) {
                    emit shareSheet(QString::fromStdString(sheet.text), QString::fromStdString(sheet.link));
                },
                .canSendMail = [this] { return services_.hasMailHandler(); },
                .presentAlert = [this](const Alert& a) {
                    emit alert(QString::fromStdString(a.title), QString::fromStdString(a.message),
                               QString::fromStdString(a.dismissTitle));
                },
                .requestReview = [this] {
                    if (!hasWindow_ || !hasWindow_())
                        return false;
                    emit reviewRequested();
                    return true;
                },
                .mainQueue = [this](std::function<void()> task) {
                    QMetaObject::invokeMethod(this, std::move(task), Qt::QueuedConnection);
                },
            })
{
}

QVariantList MoreOptionsScreen::entries() const
{
    QVariantList entries;
    for (const auto& action : menu_.menu())
        entries << QVariantMap{{QStringLiteral("title"), QString::fromStdString(action.title)},
                               {QStringLiteral("icon"), QString::fromStdString(action.image)}};
    return entries;
}

void MoreOptionsScreen::trigger(int index)
{
    const auto& menu = menu_.menu();
    if (index >= 0 && index < static_cast<int>(menu.size()))
        menu[static_cast<std::size_t>(index)].handler();
}

AppScreens::AppScreens(Dependencies d, QObject* parent)
    : QObject(parent)
    , settings_({.preferences = d.preferences,
                 .notifications = d.notifications,
                 .soundClassifierAvailable = d.soundClassifierAvailable,
                 .fontAvailable = d.fontAvailable})
    , picker_(d.preferences)
    // The settings screen below follows a change of sounds at once: its
    // footer names them.
    , sounds_(d.preferences, d.notifications,
              [this] {
                  if (navigation_.screenBelow(ScreenName::SelectSounds) == ScreenName::Settings)
                      settings_.reloadData();
              })
    , navigationScreen_(navigation_, [this] {
        if (tuner_)
            tuner_->viewDidAppear();
    })
    , settingsScreen_(settings_)
    , pickerScreen_(picker_)
    , soundsScreen_(sounds_)
    , moreOptions_(d.preferences, std::move(d.desktop))
    , inputs_(d.preferences, std::move(d.inputDevices))
    , inputsScreen_(inputs_)
    , capture_(d.preferences)
    // The patch is opened by the main screen after the screens are made.
    , heardReferenceScreen_(capture_,
                            [this] {
                                if (captureHears_ || !tuner_ || !tuner_->dispatcher())
                                    return;
                                tuner_->dispatcher()->addListener(&capture_, "frequency");
                                captureHears_ = true;
                            })
    , tuningScreen_(d.preferences)
{
}

void AppScreens::attach(ViewController& tuner)
{
    tuner_ = &tuner;
    tuner.setPushSettings([this] { navigationScreen_.push(QString::fromLatin1(ScreenName::Settings)); });
}

void AppScreens::setInstance(AppScreens* instance)
{
    gInstance = instance;
}

AppScreens* AppScreens::create(QQmlEngine*, QJSEngine*)
{
    QJSEngine::setObjectOwnership(gInstance, QJSEngine::CppOwnership);
    return gInstance;
}

} // namespace veltra
