// veltra-cli: the tuner's engine on the command line.
#include "ClassifyCommand.h"
#include "Command.h"
#include "Help.h"
#include "OutputFile.h"
#include "dsp/AudioBackendFactory.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <new>
#include <system_error>

namespace {

using namespace veltra::cli;

// Every failure is one line on standard error and an exit status: 2 for
// anything about the arguments or the files they name, 1 for work that
// could not be done. No exception's own text reaches the user but our
// UsageError's, which is written to be read.
int runCommand(const Args& all)
{
    const std::map<std::string, int (*)(const Args&, std::ostream&, std::ostream&)> commands{
        {"patch", runPatchCommand},
        {"analyze", runAnalyzeCommand},
        {"classify", runClassifyCommand},
        {"devices", runDevicesCommand},
        {"listen", runListenCommand},
        {"report", runReportCommand},
        {"tone", runToneCommand},
    };
    // Every command has its entry in the help table; one without is unknown.
    const CommandHelp* help = findCommandHelp(all[0]);
    const Args args(all.begin() + 1, all.end());
    try {
        if (!help)
            throw UsageError("unknown command '" + all[0] + "' (see --help)");
        if (std::find(args.begin(), args.end(), "--help") != args.end()) {
            std::cout << commandUsage(*help);
            return kExitOk;
        }
        return commands.at(all[0])(args, std::cout, std::cerr);
    } catch (const Interrupted& e) {
        return 128 + e.signal;
    } catch (const UsageError& e) {
        std::cerr << "veltra-cli: " << oneLine(e.what()) << '\n';
        return kExitUsage;
    } catch (const std::bad_alloc&) {
        std::cerr << "veltra-cli: not enough memory for this input\n";
        return kExitUsage;
    } catch (const std::filesystem::filesystem_error& e) {
        std::cerr << "veltra-cli: " << oneLine(e.path1().string()) << ": " << e.code().message() << '\n';
        return kExitUsage;
    } catch (const std::system_error& e) {
        std::cerr << "veltra-cli: " << e.code().message() << '\n';
        return kExitFailure;
    } catch (const std::exception& e) {
        std::cerr << "veltra-cli: internal error (" << oneLine(e.what()) << ")\n";
        return kExitFailure;
    }
}

} // namespace

int main(int argc, char** argv)
{
    veltra::quietSoundServerLog();
    guardStandardStreams();
    const Args all(argv + 1, argv + argc);
    int status = kExitOk;
    if (all.empty()) {
        std::cerr << programUsage();
        status = kExitUsage;
    } else if (all[0] == "--help" || all[0] == "-h") {
        std::cout << programUsage();
    } else if (all[0] == "--version") {
        std::cout << "veltra-cli " << VELTRA_VERSION << '\n';
    } else {
        status = runCommand(all);
    }
    // Output that never arrived is a failure, even when the work was done.
    if (const std::string why = finishStandardOutput(); !why.empty()) {
        std::cerr << "veltra-cli: standard output: cannot be written (" << why << ")\n";
        return status == kExitOk ? kExitUsage : status;
    }
    return status;
}
