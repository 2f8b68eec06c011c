#pragma once

#include <sys/types.h>

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

// The same in a folder that exists: an existing file's mode and owner carry
// over to the new one; a new file gets newFileMode.
std::string replaceFileInFolder(const std::filesystem::path& path, std::string_view text, mode_t newFileMode);

// Writes all of text to fd, resuming after interruptions; false with errno
// set when it cannot (a write of nothing counts as a full disk).
bool writeAll(int fd, std::string_view text);

} // namespace veltra
