#pragma once

#include <filesystem>

namespace veltra {

// Whether Qt Quick should render in software rather than through OpenGL.
//
// Without a GPU, OpenGL is emulated on the CPU (Mesa's llvmpipe), which
// redraws the whole window every frame in two extra threads and maps the
// emulator's code: on a 2-core machine about twice the CPU time and 85 MiB
// more resident memory than Qt's own software renderer, which repaints only
// what changed. A machine with a GPU has a render node in driDirectory
// (normally /dev/dri). A renderer the user picked through Qt's own
// environment variables is always left alone (userChoseRenderer).
bool preferSoftwareRendering(const std::filesystem::path& driDirectory, bool userChoseRenderer);

// Applies the choice for this process; call before the first window exists.
void chooseRenderer();

} // namespace veltra
