#pragma once

#include "app/ViewController.h"

#include <string>

namespace veltra::cli {

// What `listen` writes for the labels: note, deviation, frequency and a bar
// of where the deviation lies, "  A#3   -4.0%    232.4 Hz  [...]", and for
// a transposing instrument "  concert G#3" after it, each in a column of
// fixed width, so that the lines of a pipe or a file line up.
std::string listenLine(const ViewController::Labels& labels, bool transposed);

} // namespace veltra::cli
