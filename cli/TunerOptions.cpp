#include "TunerOptions.h"

#include "settings/Preferences.h"

namespace veltra::cli {

MemoryPreferenceStore tunerPreferences(ArgReader& reader)
{
    MemoryPreferenceStore preferences;
    CommonUtils::setDefaultPreferences(preferences);
    if (const auto a4 = reader.numberOption("--a4", kMinimumA4, kMaximumA4)) {
        if (*a4 != static_cast<double>(static_cast<std::int64_t>(*a4)))
            throw UsageError("--a4 must be a whole number of hertz");
        preferences.setInteger(static_cast<std::int64_t>(*a4), PreferenceKey::A4);
    }
    if (reader.flag("--flats"))
        preferences.setBool(false, PreferenceKey::SharpsOnly);
    return preferences;
}

} // namespace veltra::cli
