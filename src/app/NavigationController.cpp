#include "app/NavigationController.h"

#include "settings/Fatal.h"

#include <algorithm>

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

const std::string& NavigationController::screenBelow(const std::string& screen) const
{
    const auto at = std::find(stack_.begin(), stack_.end(), screen);
    if (at == stack_.end() || at == stack_.begin())
        fatalError("a screen asked for the one below it while not above another on the stack");
    return *(at - 1);
}

} // namespace veltra
