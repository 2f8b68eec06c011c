#include "app/qt/RendererChoice.h"

#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QtGlobal>

#include <string_view>
#include <system_error>

namespace veltra {

namespace {

// The device nodes through which programs render on a GPU (renderD128, ...).
constexpr std::string_view kRenderNodePrefix = "renderD";

} // namespace

bool preferSoftwareRendering(const std::filesystem::path& driDirectory, bool userChoseRenderer)
{
    if (userChoseRenderer)
        return false;
    std::error_code error;
    for (std::filesystem::directory_iterator it(driDirectory, error), end; !error && it != end; it.increment(error))
        if (it->path().filename().string().starts_with(kRenderNodePrefix))
            return false;
    return true;
}

void chooseRenderer()
{
    const bool userChose = qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
    if (preferSoftwareRendering("/dev/dri", userChose))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace veltra
