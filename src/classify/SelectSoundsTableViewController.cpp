#include "classify/SelectSoundsTableViewController.h"

#include "classify/SoundCategories.h"

namespace veltra {

SelectSoundsTableViewController::SelectSoundsTableViewController(PreferenceStore& preferences, NotificationCenter& notifications,
                           std::function<void()> reloadSettingsTable)
    : preferences_(preferences), notifications_(notifications), reloadSettingsTable_(std::move(reloadSettingsTable))
{
}

std::optional<std::string_view> SelectSoundsTableViewController::keyForRow(int row)
{
    if (row < 0 || row >= kRowCount)
        return std::nullopt;
    return kSoundCategories[static_cast<std::size_t>(row)].key;
}

void SelectSoundsTableViewController::didSelectRow(int row)
{
    if (const auto key = keyForRow(row))
        toggleSound(*key);
    updateCheckmarks();
}

void SelectSoundsTableViewController::toggleSound(std::string_view key)
{
    preferences_.setBool(!preferences_.boolForKey(key), key);
    if (!isAnySoundSelected())
        preferences_.setBool(true, key);
    notifications_.post(Notification::UpdateIdentifiers, this);
}

bool SelectSoundsTableViewController::isAnySoundSelected() const
{
    for (const SoundCategory& category : kSoundCategories) {
        if (preferences_.boolForKey(category.key))
            return true;
    }
    return false;
}

bool SelectSoundsTableViewController::isChecked(int row) const
{
    const auto key = keyForRow(row);
    return key && preferences_.boolForKey(*key);
}

void SelectSoundsTableViewController::updateCheckmarks()
{
    // The checkmarks themselves are bound to isChecked; only the settings
    // screen's footer needs telling.
    if (reloadSettingsTable_)
        reloadSettingsTable_();
}

} // namespace veltra
