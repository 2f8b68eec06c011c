#include "settings/Preferences.h"

#include "settings/NotificationCenter.h"

#include <algorithm>

namespace veltra {

void applyOutsideChanges(PreferenceStore& store, NotificationCenter& notifications)
{
    const std::vector<std::string> changed = store.takeOutsideChanges();
    const auto any = [&changed](std::initializer_list<std::string_view> keys) {
        return std::ranges::any_of(changed, [&keys](const std::string& key) { return std::ranges::find(keys, key) != keys.end(); });
    };
    if (any({PreferenceKey::ToneGenerator, PreferenceKey::SharpsOnly, PreferenceKey::PianoView}))
        notifications.post(Notification::UpdateUI, &store);
    if (any({PreferenceKey::SoundsGuitar, PreferenceKey::SoundsViolin, PreferenceKey::SoundsPiano, PreferenceKey::SoundsVoice}))
        notifications.post(Notification::UpdateIdentifiers, &store);
}

} // namespace veltra

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
