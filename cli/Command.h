#pragma once

#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace veltra::cli {

// Exit statuses of the tool.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailure = 1; // the work could not be done (no device, an internal fault)
inline constexpr int kExitUsage = 2;   // bad arguments, or a file that cannot be read or written

// Bad arguments or input: reported as one line, exit status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A termination signal (SIGINT, SIGTERM, SIGHUP) stopped the writing of an
// output file, after its partial copy was removed: the tool ends quietly
// with 128 plus the signal's number, as a shell reports a process it killed.
struct Interrupted {
    int signal;
};

using Args = std::vector<std::string>;

// Refuses, with a UsageError, an input file that is missing, a directory or
// not readable.
void checkInputFile(const std::string& path);

// Text for one line of standard error: control characters (a newline in a
// file name) are written as escapes, so a message stays one line.
std::string oneLine(std::string_view text);

// Small argument helpers shared by the commands.
class ArgReader {
public:
    explicit ArgReader(const Args& args);
    // Removes a flag; true when it was there.
    bool flag(const std::string& name);
    // Removes "--name VALUE"; empty when absent.
    std::optional<std::string> option(const std::string& name);
    std::optional<double> numberOption(const std::string& name, double min, double max);
    // The remaining positional arguments; unknown options are an error.
    Args positionals() const;

private:
    Args args_;
};

int runPatchCommand(const Args& args, std::ostream& out, std::ostream& err);
int runAnalyzeCommand(const Args& args, std::ostream& out, std::ostream& err);
int runDevicesCommand(const Args& args, std::ostream& out, std::ostream& err);
int runToneCommand(const Args& args, std::ostream& out, std::ostream& err);
int runListenCommand(const Args& args, std::ostream& out, std::ostream& err);
int runReportCommand(const Args& args, std::ostream& out, std::ostream& err);

} // namespace veltra::cli
