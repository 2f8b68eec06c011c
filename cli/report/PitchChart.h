#pragma once

#include "report/PracticeReport.h"

#include <string>

namespace veltra::report {

// The pitch over time on a note grid, like the app's graph turned sideways:
// every reading as a line, the notes the readout showed as bands, silence
// blank. Long recordings wrap into lines of the same time scale.
std::string pitchChart(const PracticeReport& report, const NoteNames& names);

} // namespace veltra::report
