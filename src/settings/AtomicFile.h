#pragma once

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace veltra {

// Replaces the file at path, in a folder that exists, so that whatever
// happens on the way (a crash, a power cut, a full disk) the path holds
// either the old text or the whole new one: the text goes to a new file in
// the same folder, reaches the disk, and only then takes the old file's
// name. An existing file's mode and owner carry over to the new one; a new
// file gets newFileMode. Returns an empty string, or why the file was not
// replaced.
std::string replaceFileInFolder(const std::filesystem::path& path, std::string_view text, mode_t newFileMode);

// Writes text to the file at path, wherever it really lives: a symbolic
// link is followed (a chain that ends nowhere creates the file it names),
// and the file it leads to is replaced as replaceFileInFolder does, its
// temporary beside it; a file with other hard links is rewritten in place
// (rewriteInPlace), so every name keeps seeing it. Missing folders are
// created. Returns an empty string, or why the file was not written.
std::string saveFile(const std::filesystem::path& path, std::string_view text, mode_t newFileMode);

// Rewrites an existing file where it is, for a file with several names. The
// room the new text needs is taken first, so a full disk fails before the
// old text is touched. Returns an empty string, or why.
std::string rewriteInPlace(const std::filesystem::path& path, std::string_view text);

// Where a chain of symbolic links from path leads, whether or not a file is
// there: the file a write must reach.
std::filesystem::path linkTarget(std::filesystem::path path);

// Writes all of text to fd, resuming after interruptions; false with errno
// set when it cannot (a write of nothing counts as a full disk).
bool writeAll(int fd, std::string_view text);

// Set to a signal's number by a termination signal's handler: a write that
// may stop half-way gives up at its next block, so the process can end on
// its main path leaving nothing half-written behind.
extern volatile std::sig_atomic_t gStopSignal;

// writeAll, for a write that may stop half-way (into a file about to be
// removed, into a stream): it gives up with EINTR once gStopSignal is set.
// replaceFileInFolder writes its temporary so; rewriteInPlace, whose file
// would be left half old and half new, writes to the end.
bool writeAllUnlessStopped(int fd, std::string_view text);

// A file read whole, if it is an ordinary file of at most a given size.
struct FileContents {
    bool exists = false;
    std::string text;
    std::string problem; // why an existing file was not read, or empty
};

// Reads the file at path without ever blocking or reading without end: a
// folder, a pipe or a device there is refused unread (opened non-blocking,
// then examined), and so is a file larger than largestMiB. A missing file
// (or a missing folder on the way) is no problem, only absent.
FileContents readRegularFile(const std::filesystem::path& path, std::size_t largestMiB);

// Removes the temporaries that saves of the file at path left when their
// process was killed: files beside it named like its own temporaries and
// older than age (a younger one may be another process's save under way).
void removeStaleTemporaries(const std::filesystem::path& path, std::chrono::seconds age);

} // namespace veltra
