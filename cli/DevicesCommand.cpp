#include "Command.h"

#include "dsp/AudioBackendFactory.h"

#include <ostream>

namespace veltra::cli {

int runDevicesCommand(const Args& args, std::ostream& out, std::ostream&)
{
    if (!ArgReader(args).positionals().empty())
        throw UsageError("devices takes no arguments");
    const auto devices = makeAudioBackend()->devices();
    if (devices.empty()) {
        out << "no audio devices\n";
        return kExitOk;
    }
    for (const AudioDevice& d : devices) {
        out << d.id << ": " << d.name << " (in " << d.inputChannels << ", out " << d.outputChannels << ')';
        if (d.isDefaultInput)
            out << " [default input]";
        if (d.isDefaultOutput)
            out << " [default output]";
        if (!d.sampleRates.empty()) {
            out << " rates:";
            for (unsigned rate : d.sampleRates)
                out << ' ' << rate;
        }
        out << '\n';
    }
    return kExitOk;
}

} // namespace veltra::cli
