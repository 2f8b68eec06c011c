#include "app/qt/TuningSettingsScreen.h"

#include "tuning/Temperament.h"

#include <QUrl>

namespace veltra {

namespace {

QStringList toList(const std::vector<std::string>& texts)
{
    QStringList list;
    for (const std::string& text : texts)
        list << QString::fromStdString(text);
    return list;
}

} // namespace

TuningSettingsScreen::TuningSettingsScreen(PreferenceStore& preferences, QObject* parent)
    : QObject(parent)
    , controller_(preferences)
{
}

QStringList TuningSettingsScreen::texts() const
{
    using C = TuningSettingsController;
    return toList({translate("TuningSettings", C::kTuningTitle), translate("TuningSettings", C::kTonicTitle),
                   translate("TuningSettings", C::kImportTitle),
                   translate("TuningSettings", "Path of a .scl file"), translate("TuningSettings", C::kKeyTitle),
                   translate("TuningSettings", C::kTransposeTitle), C::tuningFooter(), C::keyFooter()});
}

QStringList TuningSettingsScreen::temperamentNames() const
{
    return toList(TuningSettingsController::temperamentNames());
}

QStringList TuningSettingsScreen::tonicNames() const
{
    return toList(TuningSettingsController::tonicNames());
}

QStringList TuningSettingsScreen::keyNames() const
{
    return toList(TuningSettingsController::keyNames());
}

QStringList TuningSettingsScreen::spokenKeyNames() const
{
    return toList(TuningSettingsController::spokenKeyNames());
}

int TuningSettingsScreen::temperamentCount() const
{
    const auto builtIn = static_cast<int>(Temperament::Imported);
    return controller_.hasImportedScale() ? builtIn + 1 : builtIn;
}

void TuningSettingsScreen::setTemperament(int index)
{
    controller_.setTemperament(index);
    emit changed();
}

void TuningSettingsScreen::setTonic(int pitchClass)
{
    controller_.setTonic(pitchClass);
    emit changed();
}

void TuningSettingsScreen::setTranspose(int semitones)
{
    controller_.setTranspose(semitones);
    emit changed();
}

void TuningSettingsScreen::setKeySegment(int segment)
{
    controller_.setKeySegment(segment);
    emit changed();
}

void TuningSettingsScreen::importScala(const QString& file)
{
    const QUrl url(file);
    const QString path = url.isLocalFile() ? url.toLocalFile() : file.trimmed();
    controller_.importScala(path.toStdString());
    emit changed();
}

} // namespace veltra
