// veltra-cli: the tuner's engine on the command line.
#include "ClassifyCommand.h"
#include "Command.h"
#include "Help.h"

#include <algorithm>
#include <iostream>
#include <map>

int main(int argc, char** argv)
{
    using namespace veltra::cli;
    const Args all(argv + 1, argv + argc);
    if (all.empty()) {
        std::cerr << programUsage();
        return kExitUsage;
    }
    if (all[0] == "--help" || all[0] == "-h") {
        std::cout << programUsage();
        return kExitOk;
    }
    if (all[0] == "--version") {
        std::cout << "veltra-cli " << VELTRA_VERSION << '\n';
        return kExitOk;
    }
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
    } catch (const UsageError& e) {
        std::cerr << "veltra-cli: " << e.what() << '\n';
        return kExitUsage;
    } catch (const std::exception& e) {
        std::cerr << "veltra-cli: " << e.what() << '\n';
        return kExitFailure;
    }
}
