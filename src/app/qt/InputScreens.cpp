#include "app/qt/InputScreens.h"

namespace veltra {

InputSettingsScreen::InputSettingsScreen(InputChoiceController& inputs, QObject* parent)
    : QObject(parent), inputs_(inputs)
{
}

QStringList InputSettingsScreen::rows() const
{
    QStringList rows;
    for (const std::string& title : inputs_.rows())
        rows << QString::fromStdString(title);
    return rows;
}

QString InputSettingsScreen::footer() const
{
    return QString::fromStdString(translate(InputChoiceController::kContext, InputChoiceController::kFooter));
}

void InputSettingsScreen::load()
{
    inputs_.load();
    emit changed();
}

void InputSettingsScreen::select(int row)
{
    inputs_.select(row);
    emit changed();
}

HeardReferenceScreen::HeardReferenceScreen(ReferenceCapture& capture, std::function<void()> hear, QObject* parent)
    : QObject(parent), capture_(capture), hear_(std::move(hear))
{
    capture_.setChanged([this] { emit changed(); });
}

void HeardReferenceScreen::start()
{
    hear_();
    capture_.start();
}

} // namespace veltra
