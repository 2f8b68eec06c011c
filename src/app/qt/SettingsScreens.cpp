#include "app/qt/SettingsScreens.h"

#include "classify/SoundCategories.h"

namespace veltra {

SettingsScreen::SettingsScreen(SettingsTableViewController& screen, QObject* parent)
    : QObject(parent), screen_(screen)
{
    screen_.setReloadData([this] { emit changed(); });
}

int SettingsScreen::soundRowCount() const
{
    return screen_.numberOfSections() > SettingsTableViewController::SoundClassification
               ? screen_.numberOfRowsInSection(SettingsTableViewController::SoundClassification)
               : 0;
}

QStringList SettingsScreen::footers() const
{
    QStringList footers;
    for (int section = 0; section < screen_.numberOfSections(); ++section)
        footers << QString::fromStdString(screen_.titleForFooterInSection(section));
    return footers;
}

void SettingsScreen::load()
{
    screen_.viewDidLoad();
    emit changed();
}

void SettingsScreen::layout(bool isPad)
{
    screen_.viewDidLayoutSubviews(isPad);
    emit changed();
}

void SettingsScreen::setSwitch(int section, bool on)
{
    using S = SettingsTableViewController;
    struct Row {
        Switch S::*control;
        void (S::*action)();
    };
    Row row;
    switch (section) {
    case S::ToneGenerator: row = {&S::switchToneGenerator, &S::switchToneGeneratorToggled}; break;
    case S::GreenOverlay: row = {&S::switchGreenOverlay, &S::switchGreenOverlayToggled}; break;
    case S::SharpsOnly: row = {&S::switchSharpsOnly, &S::switchSharpsOnlyToggled}; break;
    case S::ContinuousDisplay: row = {&S::switchContinuousDisplay, &S::continiousDisplayToggled}; break;
    case S::PianoView: row = {&S::switchPianoView, &S::switchPianoViewToggled}; break;
    case S::Clock: row = {&S::switchShowClock, &S::switchShowClockToggled}; break;
    case S::SoundClassification: row = {&S::switchML, &S::switchMLToggled}; break;
    default: return;
    }
    if ((screen_.*row.control).on == on)
        return;
    (screen_.*row.control).on = on;
    (screen_.*row.action)();
    emit changed();
}

void SettingsScreen::setLatency(double value)
{
    screen_.sliderLatency.setValue(static_cast<float>(value));
    screen_.latencyValueChanged();
    emit changed();
}

void SettingsScreen::setLineThickness(double value)
{
    screen_.sliderLineThickness.setValue(static_cast<float>(value));
    screen_.lineThicknessValueChanged();
    emit changed();
}

void SettingsScreen::setCenterBarWidth(int index)
{
    screen_.segmentCenterBarWidth.selectedSegmentIndex = index;
    screen_.centerBarWidthValueChanged();
    emit changed();
}

FrequencyPickerScreen::FrequencyPickerScreen(FrequencyTableViewController& picker, QObject* parent)
    : QObject(parent), picker_(picker)
{
}

void FrequencyPickerScreen::load()
{
    picker_.viewDidLoad();
    emit changed();
}

void FrequencyPickerScreen::select(int row)
{
    if (row == selectedRow())
        return;
    picker_.didSelectRow(row);
    emit changed();
}

void FrequencyPickerScreen::reset()
{
    picker_.resetTapped();
    emit changed();
}

SelectSoundsScreen::SelectSoundsScreen(SelectSoundsTableViewController& screen, QObject* parent)
    : QObject(parent), screen_(screen)
{
}

QStringList SelectSoundsScreen::rows() const
{
    QStringList rows;
    for (const SoundCategory& category : kSoundCategories)
        rows << QString::fromStdString(translate("Sounds", std::string(category.title).c_str()));
    return rows;
}

QList<bool> SelectSoundsScreen::checked() const
{
    QList<bool> checked;
    for (int row = 0; row < SelectSoundsTableViewController::kRowCount; ++row)
        checked << screen_.isChecked(row);
    return checked;
}

void SelectSoundsScreen::load()
{
    screen_.viewDidLoad();
    emit changed();
}

void SelectSoundsScreen::tap(int row)
{
    screen_.didSelectRow(row);
    emit changed();
}

} // namespace veltra
