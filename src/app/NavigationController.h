#pragma once

#include <functional>
#include <string>
#include <vector>

namespace veltra {

// The navigation stack of the window's screens. The view layer shows the
// top screen; controllers ask for pushes and pops here.
class NavigationController {
public:
    using StackChanged = std::function<void(const std::vector<std::string>& stack, bool animated)>;

    explicit NavigationController(std::string rootScreen);

    void pushScreen(const std::string& screen, bool animated = true);
    void popScreen(bool animated = true);
    const std::vector<std::string>& stack() const { return stack_; }
    // The screen directly below the given one. A screen that is not on the
    // stack, or is its root, has none: asking is a programming error.
    const std::string& screenBelow(const std::string& screen) const;
    void setStackChanged(StackChanged callback) { stackChanged_ = std::move(callback); }

    // No screen ever hides the status bar: the flag stays false.
    bool isShowingAppOpenAd = false;
    bool prefersStatusBarHidden() const { return isShowingAppOpenAd; }

private:
    std::vector<std::string> stack_;
    StackChanged stackChanged_;
};

} // namespace veltra
