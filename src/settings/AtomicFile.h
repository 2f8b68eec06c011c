#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace veltra {

// Replaces the file at path with text so that, whatever happens on the way
// (a crash, a power cut, a full disk), the path holds either the old text
// or the whole new one: the text goes to a new file in the same folder,
// reaches the disk, and only then takes the old file's name. Missing folders
// are created. Returns an empty string, or why the file was not replaced.
std::string replaceFile(const std::filesystem::path& path, std::string_view text);

} // namespace veltra
