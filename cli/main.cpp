// veltra-cli: the tuner's engine on the command line.
#include "Command.h"

#include <iostream>
#include <map>

namespace {

constexpr const char* kUsage = R"(usage: veltra-cli COMMAND [ARGS]

The Veltra tuner's engine on the command line.

commands:
  patch                  write the pitch-detection patch to standard output
  analyze FILE --raw     every frequency the patch reports for an audio file:
                         "<seconds> <hertz>" per frame (--json: JSON Lines)
  devices                list the audio devices

options:
  --help                 this text
  --version              the program's version
)";

} // namespace

int main(int argc, char** argv)
{
    using namespace veltra::cli;
    const Args all(argv + 1, argv + argc);
    if (all.empty()) {
        std::cerr << kUsage;
        return kExitUsage;
    }
    if (all[0] == "--help" || all[0] == "-h") {
        std::cout << kUsage;
        return kExitOk;
    }
    if (all[0] == "--version") {
        std::cout << "veltra-cli " << VELTRA_VERSION << '\n';
        return kExitOk;
    }
    const std::map<std::string, int (*)(const Args&, std::ostream&, std::ostream&)> commands{
        {"patch", runPatchCommand},
        {"analyze", runAnalyzeCommand},
        {"devices", runDevicesCommand},
    };
    const auto command = commands.find(all[0]);
    try {
        if (command == commands.end())
            throw UsageError("unknown command '" + all[0] + "' (see --help)");
        return command->second(Args(all.begin() + 1, all.end()), std::cout, std::cerr);
    } catch (const UsageError& e) {
        std::cerr << "veltra-cli: " << e.what() << '\n';
        return kExitUsage;
    } catch (const std::exception& e) {
        std::cerr << "veltra-cli: " << e.what() << '\n';
        return kExitFailure;
    }
}
