#include "AudioInput.h"

#include "Command.h"

#include <filesystem>
#include <fstream>
#include <vector>

namespace veltra::cli {

AudioFileReader openAudio(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status))
        throw UsageError(path + ": no such file");
    if (std::filesystem::is_directory(status))
        throw UsageError(path + ": is a directory");
    if (!std::ifstream(path))
        throw UsageError(path + ": cannot be read (permission denied)");
    try {
        AudioFileReader reader(path);
        if (reader.frames() <= 0)
            throw UsageError(path + ": contains no audio");
        return reader;
    } catch (const AudioFileError& e) {
        throw UsageError(e.what());
    }
}

void streamAudio(AudioFileReader& reader, std::size_t blockFrames,
                 const std::function<void(std::span<const float>)>& process)
{
    std::vector<float> block(blockFrames);
    try {
        while (const std::size_t n = reader.read(block))
            process(std::span<const float>(block.data(), n));
    } catch (const AudioFileError& e) {
        throw UsageError(e.what());
    }
}

} // namespace veltra::cli
