#include "app/qt/ScreenSaverInhibitor.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QVariantMap>

namespace veltra {

namespace {
// A session service that does not answer within this time is treated as absent.
constexpr int kDbusTimeoutMs = 1000;
const QString kReason = QStringLiteral("Tuning");
} // namespace

ScreenSaverInhibitor::ScreenSaverInhibitor(std::ostream& diagnostics)
    : diagnostics_(diagnostics)
{
}

ScreenSaverInhibitor::~ScreenSaverInhibitor()
{
    release();
}

void ScreenSaverInhibitor::setIdleTimerDisabled(bool disabled)
{
    if (!disabled) {
        release();
        return;
    }
    if (screenSaverCookie_ || !portalRequest_.isEmpty())
        return;
    if (inhibitWithScreenSaver() || inhibitWithPortal())
        return;
    if (!reportedUnavailable_) {
        reportedUnavailable_ = true;
        diagnostics_ << "veltra: no screen-saver service on the session bus; the screen may blank while tuning"
                     << std::endl;
    }
}

bool ScreenSaverInhibitor::inhibitWithScreenSaver()
{
    QDBusInterface service(QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/org/freedesktop/ScreenSaver"),
                           QStringLiteral("org.freedesktop.ScreenSaver"), QDBusConnection::sessionBus());
    if (!service.isValid())
        return false;
    service.setTimeout(kDbusTimeoutMs);
    const QDBusReply<unsigned> reply = service.call(QStringLiteral("Inhibit"), QStringLiteral("Veltra"), kReason);
    if (!reply.isValid())
        return false;
    screenSaverCookie_ = reply.value();
    return true;
}

bool ScreenSaverInhibitor::inhibitWithPortal()
{
    QDBusInterface portal(QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
                          QStringLiteral("org.freedesktop.portal.Inhibit"), QDBusConnection::sessionBus());
    if (!portal.isValid())
        return false;
    portal.setTimeout(kDbusTimeoutMs);
    constexpr unsigned kInhibitIdle = 8;
    const QDBusReply<QDBusObjectPath> reply =
        portal.call(QStringLiteral("Inhibit"), QString(), kInhibitIdle, QVariantMap{{QStringLiteral("reason"), kReason}});
    if (!reply.isValid())
        return false;
    portalRequest_ = reply.value().path();
    return true;
}

void ScreenSaverInhibitor::release()
{
    if (screenSaverCookie_) {
        QDBusInterface service(QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/org/freedesktop/ScreenSaver"),
                               QStringLiteral("org.freedesktop.ScreenSaver"), QDBusConnection::sessionBus());
        service.setTimeout(kDbusTimeoutMs);
        service.call(QStringLiteral("UnInhibit"), *screenSaverCookie_);
        screenSaverCookie_.reset();
    }
    if (!portalRequest_.isEmpty()) {
        QDBusInterface request(QStringLiteral("org.freedesktop.portal.Desktop"), portalRequest_,
                               QStringLiteral("org.freedesktop.portal.Request"), QDBusConnection::sessionBus());
        request.setTimeout(kDbusTimeoutMs);
        request.call(QStringLiteral("Close"));
        portalRequest_.clear();
    }
}

} // namespace veltra
