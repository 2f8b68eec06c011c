#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace veltra {

// A fresh random (version 4) UUID in canonical upper-case hyphenated form.
std::string makeUuidString();

// The user's cache directory for the program ($XDG_CACHE_HOME/veltra or
// ~/.cache/veltra); none when neither variable is set.
std::optional<std::filesystem::path> cachesDirectory();

// Writes text to path atomically (a temporary file in the same directory,
// then a rename); creates the directory if needed. False on any failure.
bool writeFileAtomically(const std::filesystem::path& path, const std::string& text);

} // namespace veltra
