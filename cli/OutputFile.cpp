#include "OutputFile.h"

#include "Command.h"
#include "settings/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>

namespace veltra::cli {

namespace {

// As many links as the system itself follows before it gives up.
constexpr int kMostLinks = 40;

[[noreturn]] void cannotWrite(const std::string& path, const std::string& why)
{
    throw UsageError(path + ": cannot be written (" + why + ")");
}

// Where a chain of symbolic links that ends nowhere leads: the file to create.
std::filesystem::path linkTarget(std::filesystem::path path)
{
    for (int hop = 0; hop < kMostLinks; ++hop) {
        std::error_code error;
        if (!std::filesystem::is_symlink(std::filesystem::symlink_status(path, error)))
            break;
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error)
            break;
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

// Into a device or a pipe, which cannot be replaced, only written to.
void writeStraight(const std::string& path, std::string_view text)
{
    const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        cannotWrite(path, std::strerror(errno));
    const bool written = writeAll(fd, text);
    const int error = errno;
    if (::close(fd) != 0 && written)
        cannotWrite(path, std::strerror(errno));
    if (!written)
        cannotWrite(path, std::strerror(error));
}

// A file with several names is rewritten where it is, or the other names
// would keep the old text. The room the new text needs is taken first, so
// a full disk fails before the old text is touched.
void writeInPlace(const std::string& path, const std::filesystem::path& target, std::string_view text)
{
    const int fd = ::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        cannotWrite(path, std::strerror(errno));
    const auto size = static_cast<off_t>(text.size());
    bool written = true;
    if (::fallocate(fd, FALLOC_FL_KEEP_SIZE, 0, size) != 0 && errno != EOPNOTSUPP)
        written = false;
    else
        written = writeAll(fd, text) && ::ftruncate(fd, size) == 0 && ::fsync(fd) == 0;
    const int error = errno;
    if (::close(fd) != 0 && written)
        cannotWrite(path, std::strerror(errno));
    if (!written)
        cannotWrite(path, std::strerror(error));
}

mode_t newFileMode()
{
    // The mode any new file gets, as the user's umask allows.
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

void writeOutputFile(const std::string& path, std::string_view text, std::ostream& standardOutput)
{
    if (path == "-") {
        standardOutput.write(text.data(), static_cast<std::streamsize>(text.size()));
        return;
    }
    struct stat target{};
    if (::stat(path.c_str(), &target) != 0) {
        if (errno != ENOENT)
            cannotWrite(path, std::strerror(errno));
        const std::string why = replaceFileInFolder(linkTarget(path), text, newFileMode());
        if (!why.empty())
            cannotWrite(path, why);
        return;
    }
    if (S_ISDIR(target.st_mode))
        throw UsageError(path + ": is a directory");
    if (!S_ISREG(target.st_mode)) {
        writeStraight(path, text);
        return;
    }
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    if (error)
        cannotWrite(path, error.message());
    // Root may write anywhere, so the mode bits decide, as they do for a
    // user who made a file read-only to keep it.
    if ((target.st_mode & 0222) == 0 || ::access(real.c_str(), W_OK) != 0)
        throw UsageError(path + ": is read-only; choose another output file");
    if (target.st_nlink > 1) {
        writeInPlace(path, real, text);
        return;
    }
    const std::string why = replaceFileInFolder(real, text, newFileMode());
    if (!why.empty())
        cannotWrite(path, why);
}

std::string finishStandardOutput()
{
    std::cout.flush();
    const bool failedBefore = !std::cout || std::ferror(stdout);
    errno = 0;
    if (std::fflush(stdout) != 0 || std::fclose(stdout) != 0 || failedBefore)
        return errno ? std::strerror(errno) : "a write failed";
    return {};
}

void guardStandardStreams()
{
    for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd)
        if (::fcntl(fd, F_GETFD) == -1 && errno == EBADF) {
            // The lowest free descriptor is this one.
            [[maybe_unused]] const int opened = ::open("/dev/null", O_RDONLY);
        }
}

} // namespace veltra::cli
