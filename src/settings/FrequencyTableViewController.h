#pragma once

#include "settings/Localization.h"
#include "settings/PreferenceStore.h"

#include <cstdint>
#include <string>

namespace veltra {

// The reference-frequency picker's logic: a wheel of whole hertz from 400 to
// 499 that stores A4 on every selection, and a reset to 440. There is no
// confirm step: leaving the screen keeps the last selection.
class FrequencyTableViewController {
public:
    // The wheel as the logic sees it: the row it shows and whether the last
    // move should be animated.
    struct PickerView {
        std::int64_t selectedRow = 0;
        bool animated = false;
    };

    explicit FrequencyTableViewController(PreferenceStore& preferences);

    PickerView pickerView;

    // Opens on the stored value. A stored value outside the wheel gives a
    // row outside it, which the wheel handles as it does any such row.
    void viewDidLoad();

    const std::string& title() const { return title_; }
    int numberOfComponents() const { return 1; }
    int numberOfRowsInComponent(int) const { return kRowCount; }
    std::string titleForRow(std::int64_t row) const;

    void didSelectRow(std::int64_t row);
    void resetTapped();

    static constexpr const char* kTitle = VELTRA_TEXT("Picker", "A\u2084 Frequency");
    static constexpr int kRowCount = 100;
    static constexpr std::int64_t kFirstFrequency = 400;
    static constexpr std::int64_t kResetFrequency = 440;

private:
    void selectRow(std::int64_t row);

    PreferenceStore& preferences_;
    std::string title_;
};

} // namespace veltra
