#pragma once

#include "settings/Localization.h"
#include "settings/NotificationCenter.h"
#include "settings/PreferenceStore.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace veltra {

// The logic of the screen that chooses which kinds of sound open the
// classification gate. Each row is one Sounds_ preference; a tap flips it,
// except that the last checked row stays checked.
class SelectSoundsTableViewController {
public:
    static constexpr const char* kTitle = VELTRA_TEXT("Sounds", "Select Sounds");
    static constexpr int kRowCount = 4;

    // reloadSettingsTable: makes the settings screen below this one rebuild
    // its table (its footer names the selected sounds); may be empty.
    SelectSoundsTableViewController(PreferenceStore& preferences, NotificationCenter& notifications,
                 std::function<void()> reloadSettingsTable = {});

    // The preference of a row; rows beyond the table have none.
    static std::optional<std::string_view> keyForRow(int row);

    void viewDidLoad() { title_ = translate("Sounds", kTitle); }
    const std::string& title() const { return title_; }

    // A tap on a row: toggles its key if it has one, then refreshes the
    // checkmarks and the settings table.
    void didSelectRow(int row);

    // Flips the key, restores it if nothing would be selected, and posts
    // UpdateIdentifiers in either case.
    void toggleSound(std::string_view key);

    bool isAnySoundSelected() const;
    bool isChecked(int row) const;

private:
    void updateCheckmarks();

    PreferenceStore& preferences_;
    NotificationCenter& notifications_;
    std::function<void()> reloadSettingsTable_;
    std::string title_;
};

} // namespace veltra
