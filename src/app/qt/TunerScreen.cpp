#include "app/qt/TunerScreen.h"

#include <QJSEngine>
#include <QQmlEngine>

namespace veltra {

namespace {

TunerScreen* gInstance = nullptr;

// A window narrower than this lays out as a phone does (compact width);
// a screen whose short side reaches it is a tablet or a desktop.
constexpr double kRegularWidth = 600;

// The title bar before any style is applied.
constexpr double kTitleSize = 19;
constexpr double kTitleWhite = 0.95;
constexpr const char* kClockFont = "BoldHw";

} // namespace

TunerScreen::TunerScreen(ViewController& screen, LiveView& liveView, PianoView& pianoView, QObject* parent)
    : QObject(parent)
    , screen_(screen)
    , liveView_(liveView)
    , pianoView_(pianoView)
{
    screen_.setChangedCallback([this] { refresh(); });
    screen_.setPresentAlert([this](const Alert& a) {
        emit alert(QString::fromStdString(a.title), QString::fromStdString(a.message),
                   QString::fromStdString(a.dismissTitle));
    });
    liveView_.setRedrawRequest([this] { requestGraphRedraw(); });
    refresh();
}

void TunerScreen::setInstance(TunerScreen* instance)
{
    gInstance = instance;
}

TunerScreen* TunerScreen::create(QQmlEngine*, QJSEngine*)
{
    QJSEngine::setObjectOwnership(gInstance, QJSEngine::CppOwnership);
    return gInstance;
}

bool TunerScreen::titleBold() const
{
    const auto& style = screen_.titleStyle();
    return style && (style->family.empty() || style->family == kClockFont);
}

double TunerScreen::titleFontSize() const
{
    const auto& style = screen_.titleStyle();
    return style ? style->pointSize : kTitleSize;
}

double TunerScreen::titleWhite() const
{
    const auto& style = screen_.titleStyle();
    return style ? style->white : kTitleWhite;
}

QColor TunerScreen::statusColour() const
{
    const Color& c = screen_.status().colour;
    return QColor::fromRgbF(static_cast<float>(c.red), static_cast<float>(c.green), static_cast<float>(c.blue),
                            static_cast<float>(c.alpha));
}

QString TunerScreen::concertNote() const
{
    QString note = QString::fromStdString(screen_.labels().concert);
    if (note.size() > 1 && (note[1] == u'#' || note[1] == u'b'))
        note[1] = note[1] == u'#' ? QChar(0x266F) : QChar(0x266D);
    return note;
}

QStringList TunerScreen::sharpFlatButtonImages() const
{
    QStringList names;
    for (const std::string& name : screen_.sharpFlatButtonImages())
        names << QString::fromStdString(name);
    return names;
}

void TunerScreen::layout(double windowWidth, double screenShortSide)
{
    const DeviceIdiom idiom = screenShortSide >= kRegularWidth ? DeviceIdiom::Pad : DeviceIdiom::Phone;
    const SizeClass sizeClass = windowWidth >= kRegularWidth ? SizeClass::Regular : SizeClass::Compact;
    if (idiom != idiom_ || sizeClass != sizeClass_) {
        idiom_ = idiom;
        sizeClass_ = sizeClass;
        liveView_.setDeviceIdiom(idiom);
        liveView_.setHorizontalSizeClass(sizeClass);
        emit layoutClassChanged();
    }
    screen_.viewDidLayoutSubviews(idiom, sizeClass);
}

void TunerScreen::refresh()
{
    if (const QString title = QString::fromStdString(screen_.title());
        title != title_ || screen_.titleStyle() != titleStyle_) {
        title_ = title;
        titleStyle_ = screen_.titleStyle();
        emit titleChanged();
    }
    if (screen_.accessoryImage() != accessoryImage_) {
        accessoryImage_ = screen_.accessoryImage();
        emit accessoryChanged();
    }
    if (screen_.labels() != labels_) {
        labels_ = screen_.labels();
        emit labelsChanged();
    }
    if (screen_.status() != status_) {
        status_ = screen_.status();
        emit statusChanged();
    }
    if (const QString problem = QString::fromStdString(screen_.audioProblem()); problem != audioProblem_) {
        audioProblem_ = problem;
        emit audioProblemChanged();
    }
    const auto display = std::make_tuple(screen_.pianoVisible(), screen_.pianoHeight(), screen_.toneGeneratorVisible(),
                                         screen_.segmentOctaveVisible(), screen_.sharpFlatButtonImages(),
                                         screen_.transposed());
    if (display != display_) {
        display_ = display;
        emit displayChanged();
    }
}

} // namespace veltra
