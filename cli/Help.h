#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltra::cli {

// The tool's help, kept in one table: `--help`, `COMMAND --help`, the manual
// page and the shell completion are all made from it. A command is known to
// the tool only once it has an entry here.

// What the shell offers for an option's value or a command's operand.
enum class Completion { Nothing, Files, Sounds };

struct OptionHelp {
    std::string_view name;  // "--a4"
    std::string_view value; // what follows it, "HZ"; empty for a flag
    std::string_view text;
    Completion completion = Completion::Nothing;
};

struct CommandHelp {
    std::string_view name;
    std::string_view operands; // "FILE"; empty when the command takes none
    std::string_view summary;  // a phrase for the list of commands
    std::string_view details;  // sentences for the command's own help and the manual
    std::vector<OptionHelp> options;
    Completion operandCompletion = Completion::Nothing;
};

const std::vector<CommandHelp>& commandHelp();
// Null for a name that is no command.
const CommandHelp* findCommandHelp(std::string_view name);

// The texts of `veltra-cli --help` and `veltra-cli COMMAND --help`.
std::string programUsage();
std::string commandUsage(const CommandHelp& command);

// The summary and the details as sentences.
std::string description(const CommandHelp& command);

// "tone NOTE -o OUT.wav [OPTIONS]": how a command is called.
std::string synopsis(const CommandHelp& command);

} // namespace veltra::cli
