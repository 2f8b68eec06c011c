#pragma once

#include "app/ViewController.h"
#include "views/PianoView.h"

#include <QColor>
#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace veltra {

// The main screen's properties and actions for QML. It only mirrors
// ViewController: every property is read from it, and a change notification
// is sent only for what really changed.
class TunerScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Tuner)
    QML_SINGLETON

    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    // The title's face: the app's bold title face (or the bold system font)
    // rather than its regular one, its size and its grey level.
    Q_PROPERTY(bool titleBold READ titleBold NOTIFY titleChanged)
    Q_PROPERTY(double titleFontSize READ titleFontSize NOTIFY titleChanged)
    Q_PROPERTY(double titleWhite READ titleWhite NOTIFY titleChanged)
    Q_PROPERTY(QString accessoryImage READ accessoryImage NOTIFY accessoryChanged)
    Q_PROPERTY(QString noteName READ noteName NOTIFY labelsChanged)
    Q_PROPERTY(QString sharpFlat READ sharpFlat NOTIFY labelsChanged)
    Q_PROPERTY(QString octaveNumber READ octaveNumber NOTIFY labelsChanged)
    Q_PROPERTY(QString deviation READ deviation NOTIFY labelsChanged)
    Q_PROPERTY(QString frequency READ frequency NOTIFY labelsChanged)
    // The readout as a screen reader speaks it.
    Q_PROPERTY(QString readout READ readout NOTIFY labelsChanged)
    // For a transposing instrument, the concert note beside the written one
    // ("B♭3"); transposed says that the screen keeps its line.
    Q_PROPERTY(QString concertNote READ concertNote NOTIFY labelsChanged)
    Q_PROPERTY(bool transposed READ transposed NOTIFY displayChanged)
    Q_PROPERTY(bool statusVisible READ statusVisible NOTIFY statusChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged)
    Q_PROPERTY(QColor statusColour READ statusColour NOTIFY statusChanged)
    Q_PROPERTY(bool pianoVisible READ pianoVisible NOTIFY displayChanged)
    Q_PROPERTY(double pianoHeight READ pianoHeight NOTIFY displayChanged)
    Q_PROPERTY(bool toneGeneratorVisible READ toneGeneratorVisible NOTIFY displayChanged)
    Q_PROPERTY(bool segmentOctaveVisible READ segmentOctaveVisible NOTIFY displayChanged)
    Q_PROPERTY(QStringList sharpFlatButtonImages READ sharpFlatButtonImages NOTIFY displayChanged)
    // One line while the tuner hears no input; empty otherwise.
    Q_PROPERTY(QString audioProblem READ audioProblem NOTIFY audioProblemChanged)
    // The longest that line can be, for the room the screen keeps for it.
    Q_PROPERTY(QString noInputLine READ noInputLine CONSTANT)
    // Whether the screen is a tablet's or a desktop's rather than a phone's.
    Q_PROPERTY(bool pad READ pad NOTIFY layoutClassChanged)

public:
    TunerScreen(ViewController& screen, LiveView& liveView, PianoView& pianoView, QObject* parent = nullptr);

    // The instance QML sees; set once by main() before QML loads.
    static void setInstance(TunerScreen* instance);
    static TunerScreen* create(QQmlEngine*, QJSEngine*);

    QString title() const { return title_; }
    bool titleBold() const;
    double titleFontSize() const;
    double titleWhite() const;
    QString accessoryImage() const { return QString::fromStdString(screen_.accessoryImage()); }
    QString noteName() const { return QString::fromStdString(screen_.labels().noteName); }
    QString sharpFlat() const { return QString::fromStdString(screen_.labels().sharpFlat); }
    QString octaveNumber() const { return QString::fromStdString(screen_.labels().octaveNumber); }
    // The numbers as the user's language writes them ("+2,0%", "440,5").
    QString deviation() const { return QString::fromStdString(localNumber(screen_.labels().deviation)); }
    QString frequency() const { return QString::fromStdString(localNumber(screen_.labels().frequency)); }
    QString readout() const { return QString::fromStdString(ViewController::spokenReadout(screen_.labels())); }
    QString concertNote() const;
    bool transposed() const { return std::get<5>(display_); }
    bool statusVisible() const { return screen_.status().visible; }
    QString statusText() const { return QString::fromStdString(screen_.status().text); }
    QColor statusColour() const;
    bool pianoVisible() const { return screen_.pianoVisible(); }
    double pianoHeight() const { return screen_.pianoHeight(); }
    bool toneGeneratorVisible() const { return screen_.toneGeneratorVisible(); }
    bool segmentOctaveVisible() const { return screen_.segmentOctaveVisible(); }
    QStringList sharpFlatButtonImages() const;
    QString audioProblem() const { return audioProblem_; }
    static QString noInputLine()
    {
        return QString::fromStdString(translate("Tuner", ViewController::kNoInputLine));
    }
    bool pad() const { return idiom_ == DeviceIdiom::Pad; }

    LiveView& liveView() { return liveView_; }
    PianoView& pianoView() { return pianoView_; }

    Q_INVOKABLE void btnToneDown(int tag) { screen_.btnToneDown(tag); }
    Q_INVOKABLE void btnToneCancel() { screen_.btnToneCancel(); }
    Q_INVOKABLE void setOctaveSegment(int index) { screen_.setSelectedOctaveSegment(index); }
    Q_INVOKABLE void accessoryTapped() { screen_.accessoryTapped(); }
    // The screen came into view: at start and on each return to it.
    void appeared() { screen_.viewDidAppear(); }
    // Called by the screen's layout with its width and the screen's size.
    Q_INVOKABLE void layout(double windowWidth, double screenShortSide);

    // Asks the graph and the keyboard to repaint.
    void requestGraphRedraw() { emit graphNeedsDisplay(); }
    void requestPianoRedraw() { emit pianoNeedsDisplay(); }

signals:
    void titleChanged();
    void accessoryChanged();
    void labelsChanged();
    void statusChanged();
    void displayChanged();
    void audioProblemChanged();
    void graphNeedsDisplay();
    void pianoNeedsDisplay();
    void alert(const QString& title, const QString& message, const QString& dismissTitle);
    void layoutClassChanged();

public:
    DeviceIdiom idiom() const { return idiom_; }
    SizeClass sizeClass() const { return sizeClass_; }

private:
    void refresh();

    ViewController& screen_;
    LiveView& liveView_;
    PianoView& pianoView_;
    QString title_;
    std::optional<TitleStyle> titleStyle_;
    ViewController::Labels labels_;
    ViewController::Status status_;
    std::string accessoryImage_;
    std::tuple<bool, double, bool, bool, std::array<std::string, 3>, bool> display_;
    QString audioProblem_;
    DeviceIdiom idiom_ = DeviceIdiom::Phone;
    SizeClass sizeClass_ = SizeClass::Unspecified;
};

} // namespace veltra
