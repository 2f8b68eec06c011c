#include "settings/Preferences.h"

namespace veltra::CommonUtils {

void setDefaultPreferences(PreferenceStore& store)
{
    for (const PreferenceDefault& d : kPreferenceDefaults) {
        if (store.hasValue(d.key))
            continue;
        if (const auto* i = std::get_if<std::int64_t>(&d.value))
            store.setInteger(*i, d.key);
        else if (const auto* x = std::get_if<double>(&d.value))
            store.setDouble(*x, d.key);
        else
            store.setBool(std::get<bool>(d.value), d.key);
    }
}

} // namespace veltra::CommonUtils
