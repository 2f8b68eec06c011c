#include "OutputFile.h"

#include "Command.h"
#include "settings/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>

namespace veltra::cli {

namespace {

[[noreturn]] void cannotWrite(const std::string& path, const std::string& why)
{
    throw UsageError(path + ": cannot be written (" + why + ")");
}

extern "C" void askToStop(int signal)
{
    gStopSignal = signal;
}

// While an output file is written, a termination signal only asks the write
// to stop (writeAllUnlessStopped), so it can remove the partial file it had
// begun; the command then ends as Interrupted. Outside the write the usual
// disposition holds: nothing of ours is on disk to be left behind.
class StopSignalsWhileWriting {
public:
    StopSignalsWhileWriting()
    {
        struct sigaction ask{};
        ask.sa_handler = askToStop;
        sigemptyset(&ask.sa_mask);
        for (std::size_t i = 0; i < kSignals.size(); ++i)
            ::sigaction(kSignals[i], &ask, &previous_[i]);
    }
    StopSignalsWhileWriting(const StopSignalsWhileWriting&) = delete;
    StopSignalsWhileWriting& operator=(const StopSignalsWhileWriting&) = delete;
    ~StopSignalsWhileWriting()
    {
        for (std::size_t i = 0; i < kSignals.size(); ++i)
            ::sigaction(kSignals[i], &previous_[i], nullptr);
    }

private:
    static constexpr std::array<int, 3> kSignals{SIGINT, SIGTERM, SIGHUP};
    std::array<struct sigaction, kSignals.size()> previous_{};
};

// Into a device or a pipe, which cannot be replaced, only written to.
void writeStraight(const std::string& path, std::string_view text)
{
    const int fd = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0)
        cannotWrite(path, std::strerror(errno));
    const bool written = writeAllUnlessStopped(fd, text);
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

// A file's path (never "-"), written as the header says.
void writeFile(const std::string& path, std::string_view text)
{
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
    // A file with several names is rewritten where it is, or the other
    // names would keep the old text.
    const std::string why = target.st_nlink > 1 ? rewriteInPlace(real, text) : replaceFileInFolder(real, text, newFileMode());
    if (!why.empty())
        cannotWrite(path, why);
}

} // namespace

void writeOutputFile(const std::string& path, std::string_view text, std::ostream& standardOutput)
{
    if (path == "-") {
        standardOutput.write(text.data(), static_cast<std::streamsize>(text.size()));
        return;
    }
    gStopSignal = 0;
    {
        const StopSignalsWhileWriting stop;
        try {
            writeFile(path, text);
        } catch (const UsageError&) {
            if (gStopSignal == 0)
                throw;
        }
    }
    if (gStopSignal != 0)
        throw Interrupted{gStopSignal};
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
