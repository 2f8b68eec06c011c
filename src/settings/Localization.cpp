#include "settings/Localization.h"

#include <utility>

namespace veltra {

namespace {
// Set once by the window before its screens are made (and by the tests
// that switch languages between windows), read on the main thread only.
Localization gLocalization;
} // namespace

void installLocalization(Localization localization)
{
    gLocalization = std::move(localization);
}

std::string translate(const char* context, const char* text)
{
    return gLocalization.translate ? gLocalization.translate(context, text) : std::string(text);
}

std::string localNumber(std::string_view number)
{
    return gLocalization.number ? gLocalization.number(number) : std::string(number);
}

std::string fillIn(std::string_view pattern, std::initializer_list<std::string_view> values)
{
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char next = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
        const auto index = static_cast<std::size_t>(next - '1');
        if (pattern[i] == '%' && next >= '1' && next <= '9' && index < values.size()) {
            text += values.begin()[index];
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

} // namespace veltra
