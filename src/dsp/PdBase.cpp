#include "dsp/PdBase.h"

#include <z_libpd.h>
#include <z_print_util.h>
#include <z_queued.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "settings/Fatal.h"

namespace veltra {

namespace {

PdBase* gInstance = nullptr;

void initLibpdOnce()
{
    static const bool initialised = libpd_queued_init() == 0;
    if (!initialised)
        fatalError("libpd could not be initialised");
}

} // namespace

// GCC names AddressSanitizer with a macro, clang as a feature.
#if defined(__has_feature)
#if __has_feature(address_sanitizer) && !defined(__SANITIZE_ADDRESS__)
#define __SANITIZE_ADDRESS__ 1
#endif
#endif

#if defined(__SANITIZE_ADDRESS__)
// libpd allocates its global state (symbols, message buffers, queues) once per
// process and never frees it, and Pd's expr keeps the tokens of what it
// parsed; neither grows while the program runs, so the leak checker of
// sanitizer builds is told to pass them over.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:getbytes\nleak:getoken\nleak:rb_create\n";
}
extern "C" const char* __lsan_default_options()
{
    return "print_suppressions=0";
}
#endif

#if defined(__SANITIZE_THREAD__)
// libpd's message ring buffer synchronises with atomics inside libpd, which
// is built without the thread sanitizer; its copies would otherwise read as
// races. Our own side of the hand-over stays checked.
extern "C" const char* __tsan_default_suppressions()
{
    return "race:rb_read_from_buffer\nrace:rb_write_to_buffer\n";
}
#endif

PdBase::PdBase()
{
    if (gInstance)
        fatalError("only one PdBase may exist at a time");
    initLibpdOnce();
    gInstance = this;
    libpd_set_queued_floathook(&PdBase::onFloat);
    libpd_set_queued_printhook(libpd_print_concatenator);
    libpd_set_concatenated_printhook(&PdBase::onPrint);
}

PdBase::~PdBase()
{
    delegate_ = nullptr;
    std::lock_guard lock(engineMutex_);
    for (void* binding : bindings_)
        libpd_unbind(binding);
    libpd_start_message(1);
    libpd_add_float(0);
    libpd_finish_message("pd", "dsp");
    // Drop whatever the patch queued for a delegate that is going away.
    libpd_set_queued_floathook(nullptr);
    libpd_queued_receive_pd_messages();
    gInstance = nullptr;
}

void PdBase::setDelegate(PdReceiverDelegate* delegate)
{
    delegate_ = delegate;
}

void PdBase::subscribe(const std::string& source)
{
    std::lock_guard lock(engineMutex_);
    bindings_.push_back(libpd_bind(source.c_str()));
}

std::optional<PdBase::PatchHandle> PdBase::openFile(const std::string& baseName, const std::string& directory)
{
    // libpd needs a directory to resolve the patch's environment.
    const std::string where = directory.empty() ? "." : directory;
    std::lock_guard lock(engineMutex_);
    void* patch = libpd_openfile(baseName.c_str(), where.c_str());
    if (!patch)
        return std::nullopt;
    return patch;
}

void PdBase::closeFile(PatchHandle patch)
{
    std::lock_guard lock(engineMutex_);
    libpd_closefile(patch);
}

void PdBase::enqueue(std::string_view receiver, float value, bool isBang)
{
    OutgoingMessage message;
    if (receiver.size() >= message.receiver.size())
        fatalError("receiver name too long");
    std::copy(receiver.begin(), receiver.end(), message.receiver.begin());
    message.value = value;
    message.isBang = isBang;
    if (!outgoing_.push(message))
        std::fprintf(stderr, "veltra: message to '%.*s' dropped: the audio engine is not keeping up\n",
                     static_cast<int>(receiver.size()), receiver.data());
}

void PdBase::sendFloat(float value, std::string_view receiver)
{
    enqueue(receiver, value, false);
}

void PdBase::sendBang(std::string_view receiver)
{
    enqueue(receiver, 0, true);
}

void PdBase::applyPendingMessages() noexcept
{
    while (const auto message = outgoing_.pop()) {
        if (message->isBang)
            libpd_bang(message->receiver.data());
        else
            libpd_float(message->receiver.data(), message->value);
    }
}

void PdBase::receiveMessages()
{
    libpd_queued_receive_pd_messages();
}

bool PdBase::initAudio(int inputChannels, int outputChannels, int sampleRate)
{
    std::lock_guard lock(engineMutex_);
    if (libpd_init_audio(inputChannels, outputChannels, sampleRate) != 0)
        return false;
    outputChannels_ = outputChannels;
    libpd_start_message(1);
    libpd_add_float(1);
    libpd_finish_message("pd", "dsp");
    return true;
}

void PdBase::processFloat(int ticks, const float* input, float* output) noexcept
{
    std::unique_lock lock(engineMutex_, std::try_to_lock);
    if (!lock.owns_lock()) {
        std::fill_n(output, ticks * blockSize() * outputChannels_, 0.0f);
        return;
    }
    // libpd keeps its current instance per thread; the audio thread is not
    // the one that initialised it.
    libpd_set_instance(&pd_maininstance);
    applyPendingMessages();
    libpd_process_float(ticks, input, output);
}

int PdBase::blockSize()
{
    return libpd_blocksize();
}

void PdBase::onFloat(const char* source, float value)
{
    if (gInstance && gInstance->delegate_)
        gInstance->delegate_->receiveFloat(value, source);
}

void PdBase::onPrint(const char* message)
{
    if (gInstance && gInstance->delegate_)
        gInstance->delegate_->receivePrint(message);
}

} // namespace veltra
