#include "app/qt/ScreenSaverInhibitor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QVariantMap>

#include <memory>

namespace veltra {

namespace {
// A session service that does not answer within this time is treated as absent.
constexpr int kDbusTimeoutMs = 1000;
// Why the screen stays on, as the desktop shows it (GNOME's power menu).
QString reason()
{
    return QCoreApplication::translate("ScreenSaver", "Tuning");
}
const QString kScreenSaver = QStringLiteral("org.freedesktop.ScreenSaver");
const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");

// A proxy for a session-bus object that gives up after kDbusTimeoutMs.
std::unique_ptr<QDBusInterface> sessionObject(const QString& service, const QString& path, const QString& interface)
{
    auto object = std::make_unique<QDBusInterface>(service, path, interface, QDBusConnection::sessionBus());
    object->setTimeout(kDbusTimeoutMs);
    return object;
}
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
    const auto service = sessionObject(kScreenSaver, QStringLiteral("/org/freedesktop/ScreenSaver"), kScreenSaver);
    if (!service->isValid())
        return false;
    const QDBusReply<unsigned> reply = service->call(QStringLiteral("Inhibit"), QStringLiteral("Veltra"), reason());
    if (!reply.isValid())
        return false;
    screenSaverCookie_ = reply.value();
    return true;
}

bool ScreenSaverInhibitor::inhibitWithPortal()
{
    const auto portal = sessionObject(kPortal, QStringLiteral("/org/freedesktop/portal/desktop"),
                                      QStringLiteral("org.freedesktop.portal.Inhibit"));
    if (!portal->isValid())
        return false;
    constexpr unsigned kInhibitIdle = 8;
    const QDBusReply<QDBusObjectPath> reply =
        portal->call(QStringLiteral("Inhibit"), QString(), kInhibitIdle, QVariantMap{{QStringLiteral("reason"), reason()}});
    if (!reply.isValid())
        return false;
    portalRequest_ = reply.value().path();
    return true;
}

void ScreenSaverInhibitor::release()
{
    if (screenSaverCookie_) {
        sessionObject(kScreenSaver, QStringLiteral("/org/freedesktop/ScreenSaver"), kScreenSaver)
            ->call(QStringLiteral("UnInhibit"), *screenSaverCookie_);
        screenSaverCookie_.reset();
    }
    if (!portalRequest_.isEmpty()) {
        sessionObject(kPortal, portalRequest_, QStringLiteral("org.freedesktop.portal.Request"))
            ->call(QStringLiteral("Close"));
        portalRequest_.clear();
    }
}

} // namespace veltra
