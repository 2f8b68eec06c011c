#pragma once

#include "report/PracticeReport.h"

#include <ostream>

namespace veltra::report {

// The pitch over time on a note grid, like the app's graph turned sideways:
// every reading as a line, the notes the readout showed as bands, silence
// blank. Long recordings wrap into lines of the same time scale.
void pitchChart(std::ostream& out, const PracticeReport& report, const NoteNames& names);

} // namespace veltra::report
