#pragma once

#include "classify/SelectSoundsTableViewController.h"
#include "settings/FrequencyTableViewController.h"
#include "settings/SettingsTableViewController.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace veltra {

// The settings screen for QML. Values change only when the user moves a
// control or the screen is laid out again, so one change signal serves all.
class SettingsScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Settings)
    QML_UNCREATABLE("made by the application")

    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString frequency READ frequency NOTIFY changed)
    Q_PROPERTY(bool toneGenerator READ toneGenerator NOTIFY changed)
    Q_PROPERTY(bool greenOverlay READ greenOverlay NOTIFY changed)
    Q_PROPERTY(bool sharpsOnly READ sharpsOnly NOTIFY changed)
    Q_PROPERTY(bool continuousDisplay READ continuousDisplay NOTIFY changed)
    Q_PROPERTY(bool pianoView READ pianoView NOTIFY changed)
    Q_PROPERTY(bool showClock READ showClock NOTIFY changed)
    Q_PROPERTY(bool useML READ useML NOTIFY changed)
    Q_PROPERTY(int centerBarWidth READ centerBarWidth NOTIFY changed)
    Q_PROPERTY(double latency READ latency NOTIFY changed)
    Q_PROPERTY(double latencyMinimum READ latencyMinimum CONSTANT)
    Q_PROPERTY(double latencyMaximum READ latencyMaximum CONSTANT)
    Q_PROPERTY(double lineThickness READ lineThickness NOTIFY changed)
    Q_PROPERTY(double lineThicknessMinimum READ lineThicknessMinimum CONSTANT)
    Q_PROPERTY(double lineThicknessMaximum READ lineThicknessMaximum CONSTANT)
    Q_PROPERTY(double previewHeight READ previewHeight NOTIFY changed)
    Q_PROPERTY(int sectionCount READ sectionCount NOTIFY changed)
    Q_PROPERTY(int soundRowCount READ soundRowCount NOTIFY changed)
    Q_PROPERTY(QStringList footers READ footers NOTIFY changed)

public:
    SettingsScreen(SettingsTableViewController& screen, QObject* parent = nullptr);

    QString title() const { return QString::fromStdString(screen_.title()); }
    QString frequency() const { return QString::fromStdString(screen_.lblFrequency.text); }
    bool toneGenerator() const { return screen_.switchToneGenerator.on; }
    bool greenOverlay() const { return screen_.switchGreenOverlay.on; }
    bool sharpsOnly() const { return screen_.switchSharpsOnly.on; }
    bool continuousDisplay() const { return screen_.switchContinuousDisplay.on; }
    bool pianoView() const { return screen_.switchPianoView.on; }
    bool showClock() const { return screen_.switchShowClock.on; }
    bool useML() const { return screen_.switchML.on; }
    int centerBarWidth() const { return screen_.segmentCenterBarWidth.selectedSegmentIndex; }
    double latency() const { return screen_.sliderLatency.value(); }
    double latencyMinimum() const { return screen_.sliderLatency.minimum(); }
    double latencyMaximum() const { return screen_.sliderLatency.maximum(); }
    double lineThickness() const { return screen_.sliderLineThickness.value(); }
    double lineThicknessMinimum() const { return screen_.sliderLineThickness.minimum(); }
    double lineThicknessMaximum() const { return screen_.sliderLineThickness.maximum(); }
    double previewHeight() const { return screen_.lineThicknessConstraint.constant; }
    int sectionCount() const { return screen_.numberOfSections(); }
    int soundRowCount() const;
    QStringList footers() const;

    // The page was pushed, or laid out again.
    Q_INVOKABLE void load();
    Q_INVOKABLE void layout(bool isPad);

    // A switch of a section (the section numbers of the table) changed.
    Q_INVOKABLE void setSwitch(int section, bool on);
    Q_INVOKABLE void setLatency(double value);
    Q_INVOKABLE void setLineThickness(double value);
    Q_INVOKABLE void setCenterBarWidth(int index);

signals:
    void changed();

private:
    SettingsTableViewController& screen_;
};

// The reference-frequency wheel for QML.
class FrequencyPickerScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(FrequencyPicker)
    QML_UNCREATABLE("made by the application")

    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(int rowCount READ rowCount CONSTANT)
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY changed)

public:
    FrequencyPickerScreen(FrequencyTableViewController& picker, QObject* parent = nullptr);

    QString title() const { return QString::fromStdString(picker_.title()); }
    int rowCount() const { return picker_.numberOfRowsInComponent(0); }
    int selectedRow() const { return static_cast<int>(picker_.pickerView.selectedRow); }

    Q_INVOKABLE void load();
    Q_INVOKABLE QString titleForRow(int row) const { return QString::fromStdString(picker_.titleForRow(row)); }
    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void reset();

signals:
    void changed();

private:
    FrequencyTableViewController& picker_;
};

// The sound-selection list for QML.
class SelectSoundsScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SelectSounds)
    QML_UNCREATABLE("made by the application")

    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QStringList rows READ rows CONSTANT)
    Q_PROPERTY(QList<bool> checked READ checked NOTIFY changed)

public:
    SelectSoundsScreen(SelectSoundsTableViewController& screen, QObject* parent = nullptr);

    QString title() const { return QString::fromStdString(screen_.title()); }
    QStringList rows() const;
    QList<bool> checked() const;

    Q_INVOKABLE void load();
    Q_INVOKABLE void tap(int row);

signals:
    void changed();

private:
    SelectSoundsTableViewController& screen_;
};

} // namespace veltra
