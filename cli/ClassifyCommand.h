#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace veltra::cli {

// veltra-cli classify FILE [--top N] [--gate guitar,violin,piano,voice] [--model PATH]
//
// Runs the sound classifier over an audio file and prints one line per
// analysed window: its start time and the best labels with their scores.
// With --gate, each result also goes through the engine's gate with only
// the named categories enabled, and the line ends with the gate's state.
// `args` are the arguments after "classify". Returns the exit status; bad
// arguments or an unreadable file give status 2 and one line on `err`.
int runClassifyCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace veltra::cli
