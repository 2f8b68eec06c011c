#include "AudioInput.h"
#include "Command.h"

#include "dsp/OfflinePatch.h"
#include "dsp/PdDispatcher.h"

#include <cstdio>
#include <ostream>

namespace veltra::cli {

namespace {

// Prints every value the patch sends to "frequency" with the audio time at
// the end of the frame that produced it.
class RawPrinter : public PdListener {
public:
    RawPrinter(std::ostream& out, const OfflineDriver& driver, bool json)
        : out_(out)
        , driver_(driver)
        , json_(json)
    {
    }

    void receiveFloat(float value, const std::string&) override
    {
        char line[96];
        std::snprintf(line, sizeof line, json_ ? "{\"t\":%.6f,\"frequency\":%.4f}\n" : "%.6f %.4f\n",
                      driver_.time(), static_cast<double>(value));
        out_ << line;
    }

private:
    std::ostream& out_;
    const OfflineDriver& driver_;
    bool json_;
};

} // namespace

int runAnalyzeCommand(const Args& args, std::ostream& out, std::ostream& err)
{
    ArgReader reader(args);
    const bool raw = reader.flag("--raw");
    const bool json = reader.flag("--json");
    const Args files = reader.positionals();
    if (files.size() != 1)
        throw UsageError("analyze takes one audio file");
    if (!raw)
        throw UsageError("analyze needs --raw");
    const AudioData audio = loadAudio(files[0]);

    PdBase base;
    PdDispatcher dispatcher(base, err);
    base.setDelegate(&dispatcher);
    OfflinePatch patch(base, static_cast<int>(audio.sampleRate));
    RawPrinter printer(out, patch.driver(), json);
    dispatcher.addListener(&printer, "frequency");
    patch.driver().run(audio.samples);
    out.flush();
    return kExitOk;
}

} // namespace veltra::cli
