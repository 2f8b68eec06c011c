#include "ClassifyCommand.h"

#include "Command.h"
#include "SoundOptions.h"
#include "classify/NeuralSoundClassifier.h"
#include "classify/SoundGate.h"
#include "AudioInput.h"
#include "settings/MemoryPreferenceStore.h"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <sstream>

namespace veltra::cli {

namespace {

// Labels printed per window unless --top says otherwise.
constexpr double kDefaultTop = 3;
// The engine's buffer size: the file is fed as the microphone would be.
constexpr std::size_t kChunkFrames = 2048;

void printWindow(const SoundClassificationResult& result, std::size_t top, const SoundGate* gate, std::ostream& out)
{
    char text[64];
    std::snprintf(text, sizeof text, "%7.2f", result.timeSeconds);
    out << text;
    for (std::size_t i = 0; i < std::min(top, result.classifications.size()); ++i) {
        std::snprintf(text, sizeof text, " %.3f", result.classifications[i].confidence);
        out << "  " << result.classifications[i].identifier << text;
    }
    if (gate) {
        if (gate->isSoundDetected())
            out << "  gate: open (" << gate->currentSound() << ")";
        else
            out << "  gate: closed";
    }
    out << '\n';
}

} // namespace

std::unique_ptr<NeuralSoundClassifier> loadClassifier(const std::filesystem::path& path)
{
    const std::string name = path.string();
    checkInputFile(name);
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        throw UsageError(name + ": not a sound model (a device or a pipe, not a file)");
    // Whatever reading the file throws is about the file: one line naming it.
    try {
        return NeuralSoundClassifier::fromFile(path);
    } catch (const SoundModelError& e) {
        throw UsageError(e.what());
    } catch (const std::bad_alloc&) {
        throw UsageError(name + ": not a sound model (it asks for more memory than there is)");
    } catch (const std::exception&) {
        throw UsageError(name + ": cannot be read as a sound model");
    }
}

int runClassifyCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err)
{
    try {
        ArgReader reader(args);
        const auto top = static_cast<std::size_t>(reader.numberOption("--top", 1, 100).value_or(kDefaultTop));
        const auto gateList = reader.option("--gate");
        const auto modelPath = reader.option("--model");
        const Args positionals = reader.positionals();
        if (positionals.size() != 1)
            throw UsageError("classify needs exactly one audio file");

        MemoryPreferenceStore store;
        std::ostringstream gateConsole; // the engine's log lines are not part of this report
        std::optional<SoundGate> gate;
        if (gateList) {
            enableSoundCategories("--gate", *gateList, store);
            gate.emplace(store, gateConsole);
            gate->updateIdentifiers();
        }
        const auto classifier = loadClassifier(modelPath ? std::filesystem::path(*modelPath) : defaultSoundModelPath());
        AudioInput audio(positionals[0]);
        classifier->reset(audio.sampleRate());
        audio.stream(kChunkFrames, [&](std::span<const float> chunk) {
            for (const auto& result : classifier->analyze(chunk)) {
                if (gate)
                    gate->processResult(result);
                printWindow(result, top, gate ? &*gate : nullptr, out);
            }
        });
        return kExitOk;
    } catch (const UsageError& error) {
        err << "veltra-cli classify: " << oneLine(error.what()) << '\n';
        return kExitUsage;
    }
}

} // namespace veltra::cli
