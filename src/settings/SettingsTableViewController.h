#pragma once

#include "settings/Controls.h"
#include "settings/Localization.h"
#include "settings/NotificationCenter.h"
#include "settings/PreferenceStore.h"

#include <functional>
#include <optional>
#include <string>

namespace veltra {

// The settings screen's logic: a grouped table of eleven sections, one
// setting each with a footer that explains it. Every control writes its
// preference the moment it changes; the three that change the main
// screen's arrangement also post UpdateUI. The store is the screen's only
// state: each layout pass shows its values afresh.
class SettingsTableViewController {
public:
    struct Dependencies {
        PreferenceStore& preferences;
        NotificationCenter& notifications;
        // Whether the machine has a sound classifier (the last section).
        bool soundClassifierAvailable = true;
        // Whether a title font of that name and size is installed.
        std::function<bool(const std::string& family, double size)> fontAvailable;
    };

    enum Section {
        ReferenceFrequency,
        ToneGenerator,
        GreenOverlay,
        SharpsOnly,
        ContinuousDisplay,
        CenterBarWidth,
        Latency,
        PianoView,
        LineThickness,
        Clock,
        SoundClassification,
    };

    explicit SettingsTableViewController(Dependencies dependencies);

    // The controls, bound by the view layer.
    Label lblFrequency;
    Switch switchToneGenerator, switchGreenOverlay, switchSharpsOnly, switchML, switchShowClock, switchPianoView,
        switchContinuousDisplay;
    Slider sliderLatency;
    Slider sliderLineThickness;
    SegmentedControl segmentCenterBarWidth;
    // Sizes the line that previews the graph's line thickness.
    LayoutConstraint lineThicknessConstraint;

    void viewDidLoad();
    void viewDidLayoutSubviews(bool isPad);

    const std::string& title() const { return title_; }
    const std::optional<TitleStyle>& titleStyle() const { return titleStyle_; }
    // On a tablet the screen asks its navigation stack for this size.
    const std::optional<std::pair<double, double>>& preferredContentSize() const { return preferredContentSize_; }

    int numberOfSections() const;
    int numberOfRowsInSection(int section) const;
    std::string titleForFooterInSection(int section) const;

    // The control actions: each reads its control and writes its key.
    void switchToneGeneratorToggled();
    void switchGreenOverlayToggled();
    void switchSharpsOnlyToggled();
    void switchMLToggled();
    void switchPianoViewToggled();
    void continiousDisplayToggled();
    void switchShowClockToggled();
    void latencyValueChanged();
    void lineThicknessValueChanged();
    void centerBarWidthValueChanged();

    // Called when the table's sections or rows must be rebuilt.
    void setReloadData(std::function<void()> reload) { reloadData_ = std::move(reload); }
    void reloadData();

    static constexpr const char* kTitle = VELTRA_TEXT("Settings", "Settings");
    // The preview line is this much thinner than the thickness it shows.
    static constexpr double kPreviewInset = 2.0;
    static constexpr double kPadContentWidth = 320;
    static constexpr double kPadContentHeight = 348;

private:
    Dependencies d_;
    std::string title_;
    std::optional<TitleStyle> titleStyle_;
    std::optional<std::pair<double, double>> preferredContentSize_;
    std::function<void()> reloadData_;
};

} // namespace veltra
