#include "app/NavigationController.h"

namespace veltra {

NavigationController::NavigationController(std::string rootScreen)
    : stack_{std::move(rootScreen)}
{
}

void NavigationController::pushScreen(const std::string& screen, bool animated)
{
    stack_.push_back(screen);
    if (stackChanged_)
        stackChanged_(stack_, animated);
}

void NavigationController::popScreen(bool animated)
{
    // The root screen stays.
    if (stack_.size() < 2)
        return;
    stack_.pop_back();
    if (stackChanged_)
        stackChanged_(stack_, animated);
}

} // namespace veltra
