#include "AudioInput.h"

#include "Command.h"

#include <filesystem>
#include <fstream>

namespace veltra::cli {

AudioData loadAudio(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        throw UsageError(path + ": no such file");
    if (std::filesystem::is_directory(status))
        throw UsageError(path + ": is a directory");
    if (!std::ifstream(path))
        throw UsageError(path + ": cannot be read (permission denied)");
    AudioData audio;
    try {
        audio = readAudioFile(path);
    } catch (const AudioFileError& e) {
        throw UsageError(e.what());
    }
    if (audio.samples.empty())
        throw UsageError(path + ": contains no audio");
    return audio;
}

} // namespace veltra::cli
