#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace veltra {

// Names of the in-process broadcasts.
namespace Notification {
inline constexpr std::string_view UpdateUI = "UpdateUI";
inline constexpr std::string_view UpdateIdentifiers = "UpdateIdentifiers";
} // namespace Notification

// Name-only broadcasts within the process, posted and delivered on the main
// thread. Observers are called in the order they were added.
class NotificationCenter {
public:
    using Observer = std::function<void(const void* sender)>;
    using Token = unsigned;

    Token addObserver(std::string_view name, Observer observer);
    void removeObserver(Token token);
    void post(std::string_view name, const void* sender = nullptr);

private:
    struct Entry {
        Token token;
        std::string name;
        Observer observer;
    };
    std::vector<Entry> entries_;
    Token nextToken_ = 1;
};

} // namespace veltra
