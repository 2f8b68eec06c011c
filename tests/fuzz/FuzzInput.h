#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace veltra::fuzz {

// A fuzz input as a file the code under test opens by name: an anonymous
// file in memory, named through /proc, so nothing touches the disk and
// every run starts clean.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : fd_(memfd_create("fuzz-input", MFD_CLOEXEC))
    {
        for (std::size_t done = 0; fd_ >= 0 && done < size;) {
            const ssize_t n = ::write(fd_, data + done, size - done);
            if (n <= 0)
                break;
            done += static_cast<std::size_t>(n);
        }
    }
    ~MemoryFile()
    {
        if (fd_ >= 0)
            ::close(fd_);
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    bool ok() const { return fd_ >= 0; }
    std::string path() const { return "/proc/self/fd/" + std::to_string(fd_); }

private:
    int fd_;
};

} // namespace veltra::fuzz
