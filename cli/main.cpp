// veltra-cli: the tuner's engine on the command line.
#include "ClassifyCommand.h"
#include "Command.h"

#include <iostream>
#include <map>

namespace {

constexpr const char* kUsage = R"(usage: veltra-cli COMMAND [ARGS]

The Veltra tuner's engine on the command line.

commands:
  patch                  write the pitch-detection patch to standard output
  analyze FILE           what the tuner shows over an audio file: a line per
                         change of the readout, then the note shown longest
      --raw              instead, every frequency the patch reports:
                         "<seconds> <hertz>" per analysis frame
      --json             JSON Lines instead of text
      --a4 HZ            reference A, 400 to 499 (default 440)
      --flats            name B flat, E flat and A flat instead of sharps
      --use-ml           show pitch only while the sound classifier hears
                         an accepted sound, as the app's gate does
      --sounds LIST      the accepted sounds for --use-ml, from guitar,
                         violin, piano, voice (default guitar)
  tone NOTE -o OUT.wav   render a reference tone (C, C#, Db, ... B) as the
                         tone buttons play it
      --octave N         octave 4 to 7 (default 4, the octave of middle C)
      --seconds S        how long the button is held (default 2)
      --a4 HZ            reference A, 400 to 499 (default 440)
  listen                 the tuner on the default microphone, until Ctrl-C
      --a4 HZ, --flats   as for analyze
  classify FILE          the sound classifier's best labels per window
      --top N            how many labels (default 3)
      --gate LIST        also the gate's state with these sounds accepted
  report FILE -o OUT.html
                         a practice report: how in tune each note was
      --json             the same figures as JSON (standard output
                         without -o)
      --a4 HZ, --flats, --use-ml, --sounds LIST
                         as for analyze
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
        {"classify", runClassifyCommand},
        {"devices", runDevicesCommand},
        {"listen", runListenCommand},
        {"report", runReportCommand},
        {"tone", runToneCommand},
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
