#include "settings/FrequencyTableViewController.h"

#include "settings/Localization.h"
#include "settings/Preferences.h"

namespace veltra {

FrequencyTableViewController::FrequencyTableViewController(PreferenceStore& preferences)
    : preferences_(preferences)
{
}

void FrequencyTableViewController::viewDidLoad()
{
    title_ = translate("Picker", kTitle);
    selectRow(preferences_.integerForKey(PreferenceKey::A4) - kFirstFrequency);
}

std::string FrequencyTableViewController::titleForRow(std::int64_t row) const
{
    return std::to_string(row + kFirstFrequency);
}

void FrequencyTableViewController::didSelectRow(std::int64_t row)
{
    pickerView.selectedRow = row;
    pickerView.animated = false;
    preferences_.setInteger(row + kFirstFrequency, PreferenceKey::A4);
}

void FrequencyTableViewController::resetTapped()
{
    selectRow(kResetFrequency - kFirstFrequency);
    preferences_.setInteger(kResetFrequency, PreferenceKey::A4);
}

void FrequencyTableViewController::selectRow(std::int64_t row)
{
    pickerView.selectedRow = row;
    pickerView.animated = true;
}

} // namespace veltra
