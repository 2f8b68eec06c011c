#include "settings/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace veltra {

namespace {

// A preference file is the user's alone unless they made it otherwise.
constexpr mode_t kNewFileMode = 0600;

std::string lastError()
{
    return std::strerror(errno);
}

} // namespace

bool writeAll(int fd, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t n = ::write(fd, text.data(), text.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n == 0)
            errno = ENOSPC;
        if (n <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

std::string replaceFile(const std::filesystem::path& path, std::string_view text)
{
    const std::filesystem::path folder = path.parent_path().empty() ? "." : path.parent_path();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        return error.message();
    return replaceFileInFolder(path, text, kNewFileMode);
}

std::string replaceFileInFolder(const std::filesystem::path& path, std::string_view text, mode_t newFileMode)
{
    const std::filesystem::path folder = path.parent_path().empty() ? "." : path.parent_path();
    // A unique name beside the target: never a file of the user's own.
    std::string temporary = path.string() + ".XXXXXX";
    const int file = mkstemp(temporary.data());
    if (file < 0)
        return lastError();
    struct stat old{};
    const bool existed = ::stat(path.c_str(), &old) == 0;
    // Run by root on another user's file, the file stays theirs; where the
    // owner cannot be kept, the new file is this user's, as any new file is.
    if (existed) {
        [[maybe_unused]] const int kept = fchown(file, old.st_uid, old.st_gid);
    }
    const mode_t mode = existed ? (old.st_mode & 07777) : newFileMode;
    bool written = fchmod(file, mode) == 0 && writeAll(file, text) && fsync(file) == 0;
    std::string why = written ? "" : lastError();
    if (::close(file) != 0 && written) {
        written = false;
        why = lastError();
    }
    if (written && std::rename(temporary.c_str(), path.c_str()) != 0) {
        written = false;
        why = lastError();
    }
    if (!written) {
        ::unlink(temporary.c_str());
        return why;
    }
    // The rename itself reaches the disk with the folder.
    if (const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY); fd >= 0) {
        fsync(fd);
        ::close(fd);
    }
    return {};
}

} // namespace veltra
