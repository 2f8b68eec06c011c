// The preference file on any text: it is checked, read and edited as the
// app does at start-up and on every change. An edit must change the value
// asked for and nothing else: every other line of the file survives it
// byte for byte, and every other key reads as before. The same text as a
// sound input's name: whatever the name's rule accepts, the file holds and
// reads back unchanged.
#include "settings/IniText.h"
#include "settings/PreferenceRules.h"
#include "settings/Preferences.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

// The text that b holds in place of a: what lies between their longest
// common beginning and their longest common end.
struct Difference {
    std::string_view removed, added;
};

Difference difference(std::string_view a, std::string_view b)
{
    std::size_t begin = 0;
    while (begin < a.size() && begin < b.size() && a[begin] == b[begin])
        ++begin;
    std::size_t end = 0;
    while (end < a.size() - begin && end < b.size() - begin && a[a.size() - 1 - end] == b[b.size() - 1 - end])
        ++end;
    return {a.substr(begin, a.size() - begin - end), b.substr(begin, b.size() - begin - end)};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (acceptsText(*veltra::preferenceRule(veltra::PreferenceKey::InputSource), text)) {
        veltra::IniText named("[General]\nA4=440\n");
        named.set(veltra::PreferenceKey::InputSource, text);
        const auto back = named.value(veltra::PreferenceKey::InputSource);
        if (!back || *back != text || named.value("A4") != "440" ||
            (veltra::problemWithIniText(text).empty() && !veltra::problemWithIniText(named.text()).empty()))
            std::abort(); // a name the file does not keep as it was given
    }
    if (!veltra::problemWithIniText(text).empty())
        return 0;
    veltra::IniText ini(text);
    for (const std::string_view key : {"A4", "SharpsOnly", "UseML", "Instrument"})
        (void)ini.value(key);
    const auto before = ini.entries();
    const bool hadA4 = ini.value("A4").has_value();
    ini.set("A4", "442");
    const auto a4 = ini.value("A4");
    if (!a4 || *a4 != "442")
        std::abort(); // an edit that does not read back
    // A value replaced within its line, or new lines added: no line break
    // of the old text is gone, so each other line is still there whole.
    const Difference change = difference(text, ini.text());
    if (change.removed.find('\n') != std::string_view::npos || (hadA4 && change.added.find('\n') != std::string_view::npos))
        std::abort(); // another line was touched
    auto after = ini.entries();
    after.erase("a4");
    auto expected = before;
    expected.erase("a4");
    if (after != expected)
        std::abort(); // another key reads differently
    if (!veltra::problemWithIniText(ini.text()).empty())
        std::abort(); // the edit made the file unreadable
    return 0;
}
