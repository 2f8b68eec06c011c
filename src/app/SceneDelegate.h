#pragma once

#include <ostream>

namespace veltra {

class AppDelegate;

// Keeps the screen awake (or lets it sleep again); the screen-saver
// inhibition of the desktop session on a real machine.
class IdleTimer {
public:
    virtual ~IdleTimer() = default;
    virtual void setIdleTimerDisabled(bool disabled) = 0;
};

// Ties audio to the window's activity: the window shown (not minimised)
// restarts audio and keeps the screen awake; minimised or hidden stops
// audio and lets the screen sleep. Focus alone changes nothing.
class SceneDelegate {
public:
    SceneDelegate(AppDelegate* appDelegate, IdleTimer& idleTimer, std::ostream& console);

    void sceneDidBecomeActive();
    void sceneWillResignActive();

private:
    AppDelegate& appDelegate() const;

    AppDelegate* appDelegate_;
    IdleTimer& idleTimer_;
    std::ostream& console_;
};

} // namespace veltra
