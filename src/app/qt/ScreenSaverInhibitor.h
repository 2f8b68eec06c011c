#pragma once

#include "app/SceneDelegate.h"

#include <QString>

#include <optional>
#include <ostream>

namespace veltra {

// Keeps the desktop from blanking or locking while the tuner is in front,
// through the session's screen-saver service, or the desktop portal where
// only that is offered (sandboxed or phone sessions). Without either, the
// screen simply keeps its own settings; that is said once on diagnostics.
class ScreenSaverInhibitor : public IdleTimer {
public:
    explicit ScreenSaverInhibitor(std::ostream& diagnostics);
    ~ScreenSaverInhibitor() override;

    void setIdleTimerDisabled(bool disabled) override;

private:
    bool inhibitWithScreenSaver();
    bool inhibitWithPortal();
    void release();

    std::ostream& diagnostics_;
    std::optional<unsigned> screenSaverCookie_;
    QString portalRequest_;
    bool reportedUnavailable_ = false;
};

} // namespace veltra
