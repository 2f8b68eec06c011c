#include "settings/NotificationCenter.h"

#include <algorithm>

namespace veltra {

NotificationCenter::Token NotificationCenter::addObserver(std::string_view name, Observer observer)
{
    entries_.push_back({nextToken_, std::string(name), std::move(observer)});
    return nextToken_++;
}

void NotificationCenter::removeObserver(Token token)
{
    std::erase_if(entries_, [token](const Entry& e) { return e.token == token; });
}

void NotificationCenter::post(std::string_view name, const void* sender)
{
    // Observers may add or remove observers; deliver to a snapshot.
    const std::vector<Entry> snapshot = entries_;
    for (const Entry& e : snapshot)
        if (e.name == name)
            e.observer(sender);
}

} // namespace veltra
