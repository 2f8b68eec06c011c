#include "settings/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>

namespace veltra {

namespace {

// The end of a temporary's name: mkstemp's six letters and digits.
constexpr std::string_view kTemporarySuffix = ".XXXXXX";
// A stop request is noticed between blocks of this size.
constexpr std::size_t kWriteBlock = 1 << 20;
// As many links as the system itself follows before it gives up.
constexpr int kMostLinks = 40;

std::string lastError()
{
    return std::strerror(errno);
}

bool isTemporaryOf(const std::string& name, const std::string& file)
{
    if (name.size() != file.size() + kTemporarySuffix.size() || !name.starts_with(file + "."))
        return false;
    return std::all_of(name.end() - static_cast<std::ptrdiff_t>(kTemporarySuffix.size() - 1), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)); });
}

} // namespace

volatile std::sig_atomic_t gStopSignal = 0;

namespace {

bool writeBlocks(int fd, std::string_view text, bool stoppable)
{
    while (!text.empty()) {
        if (stoppable && gStopSignal != 0) {
            errno = EINTR;
            return false;
        }
        const ssize_t n = ::write(fd, text.data(), std::min(text.size(), kWriteBlock));
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

} // namespace

bool writeAll(int fd, std::string_view text)
{
    return writeBlocks(fd, text, false);
}

bool writeAllUnlessStopped(int fd, std::string_view text)
{
    return writeBlocks(fd, text, true);
}

std::string replaceFileInFolder(const std::filesystem::path& path, std::string_view text, mode_t newFileMode)
{
    const std::filesystem::path folder = path.parent_path().empty() ? "." : path.parent_path();
    // A unique name beside the target: never a file of the user's own.
    std::string temporary = path.string() + std::string(kTemporarySuffix);
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
    bool written = fchmod(file, mode) == 0 && writeAllUnlessStopped(file, text) && fsync(file) == 0;
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

std::string rewriteInPlace(const std::filesystem::path& path, std::string_view text)
{
    const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        return lastError();
    const auto size = static_cast<off_t>(text.size());
    bool written = true;
    if (::fallocate(fd, FALLOC_FL_KEEP_SIZE, 0, size) != 0 && errno != EOPNOTSUPP)
        written = false;
    else
        written = writeAll(fd, text) && ::ftruncate(fd, size) == 0 && ::fsync(fd) == 0;
    std::string why = written ? "" : lastError();
    if (::close(fd) != 0 && written)
        why = lastError();
    return why;
}

std::string saveFile(const std::filesystem::path& path, std::string_view text, mode_t newFileMode)
{
    const std::filesystem::path target = linkTarget(path);
    if (struct stat info{}; ::stat(target.c_str(), &info) == 0 && S_ISREG(info.st_mode) && info.st_nlink > 1)
        return rewriteInPlace(target, text);
    const std::filesystem::path folder = target.parent_path().empty() ? "." : target.parent_path();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        return error.message();
    return replaceFileInFolder(target, text, newFileMode);
}

FileContents readRegularFile(const std::filesystem::path& path, std::size_t largestMiB)
{
    FileContents contents;
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (fd < 0) {
        if (errno != ENOENT && errno != ENOTDIR) {
            contents.exists = true;
            contents.problem = "it cannot be read: " + lastError();
        }
        return contents;
    }
    contents.exists = true;
    const std::size_t largest = largestMiB << 20;
    const std::string tooLarge = "it is larger than " + std::to_string(largestMiB) + " MiB";
    struct stat info{};
    if (::fstat(fd, &info) != 0) {
        contents.problem = "it cannot be read: " + lastError();
    } else if (S_ISDIR(info.st_mode)) {
        contents.problem = "it is a folder";
    } else if (!S_ISREG(info.st_mode)) {
        contents.problem = "it is not a regular file";
    } else if (static_cast<std::size_t>(info.st_size) > largest) {
        contents.problem = tooLarge;
    } else {
        // The file may grow while it is read: one byte past the limit tells.
        contents.text.resize(largest + 1);
        std::size_t size = 0;
        while (size < contents.text.size()) {
            const ssize_t n = ::read(fd, contents.text.data() + size, contents.text.size() - size);
            if (n < 0 && errno == EINTR)
                continue;
            if (n < 0)
                contents.problem = "it cannot be read: " + lastError();
            if (n <= 0)
                break;
            size += static_cast<std::size_t>(n);
        }
        contents.text.resize(size);
        if (size > largest)
            contents.problem = tooLarge;
    }
    ::close(fd);
    if (!contents.problem.empty())
        contents.text.clear();
    return contents;
}

void removeStaleTemporaries(const std::filesystem::path& path, std::chrono::seconds age)
{
    const std::filesystem::path target = linkTarget(path);
    const std::string file = target.filename().string();
    std::error_code error;
    std::filesystem::directory_iterator entries(target.parent_path().empty() ? "." : target.parent_path(), error);
    const auto before = std::filesystem::file_time_type::clock::now() - age;
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const std::filesystem::directory_entry& entry = *entries;
        if (!isTemporaryOf(entry.path().filename().string(), file))
            continue;
        std::error_code failed;
        const bool plainFile = entry.symlink_status(failed).type() == std::filesystem::file_type::regular;
        const auto written = entry.last_write_time(failed);
        if (!failed && plainFile && written < before)
            std::filesystem::remove(entry.path(), failed);
    }
}

} // namespace veltra
