#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace veltra {
class NeuralSoundClassifier;
}

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

// The classifier with the weights at path. Whatever goes wrong (no such
// file, not a model, a damaged one, too large) is a UsageError whose one
// line names the file.
std::unique_ptr<NeuralSoundClassifier> loadClassifier(const std::filesystem::path& path);

} // namespace veltra::cli
