// The preference file on any text: it is checked, read and edited as the
// app does at start-up and on every change, and an edit changes nothing
// but the value asked for.
#include "settings/IniText.h"
#include "settings/Preferences.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (!veltra::problemWithIniText(text).empty())
        return 0;
    veltra::IniText ini(text);
    for (const std::string_view key : {"A4", "SharpsOnly", "UseML", "Instrument"})
        (void)ini.value(key);
    ini.set("A4", "442");
    const auto a4 = ini.value("A4");
    if (!a4 || *a4 != "442")
        std::abort(); // an edit that does not read back
    return 0;
}
