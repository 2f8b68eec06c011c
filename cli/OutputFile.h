#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace veltra::cli {

// Writes a command's output file as a careful Unix tool does. "-" is
// standardOutput. A regular file (or one a symbolic link leads to) is
// replaced whole through a new file beside it that takes its mode and
// owner, so a failure at any point leaves the old file as it was; a file
// with other hard links is written in place after its room is taken, so
// every name keeps seeing it. A read-only file is refused. Anything else
// (a device, a pipe) is written straight into. Every write and the close
// are checked: a failure is a UsageError naming the file and the reason.
// SIGINT, SIGTERM or SIGHUP during the write stops it, removes the partial
// new file and throws Interrupted; the old file stays as it was.
void writeOutputFile(const std::string& path, std::string_view text, std::ostream& standardOutput);

// Standard output, checked after the command: a full disk or a closed
// output is an error, not lost output. Returns an empty string, or why.
std::string finishStandardOutput();

// Makes sure descriptors 0 to 2 are open before any file is, so a file the
// tool opens can never be taken for its standard output. A closed one is
// opened read-only on /dev/null: writes to it fail, and are reported.
void guardStandardStreams();

} // namespace veltra::cli
