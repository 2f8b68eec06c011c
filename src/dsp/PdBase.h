#pragma once

#include "dsp/PdListener.h"
#include "dsp/PdSender.h"
#include "dsp/SpscQueue.h"

#include <array>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace veltra {

// The program's one Pure Data engine (libpd is a process-wide singleton, so
// at most one PdBase exists at a time).
//
// Threads: the main thread opens patches, subscribes and sends; the audio
// thread (or an offline driver) calls processFloat. Messages from the patch
// are queued on the audio thread by libpd's queued mode and delivered on the
// main thread by receiveMessages, so delegates run on the main thread only.
// Sends are queued to the audio thread and applied before its next block;
// the audio thread never waits for the main thread.
class PdBase : public PdSender {
public:
    using PatchHandle = void*;

    PdBase();
    ~PdBase() override;
    PdBase(const PdBase&) = delete;
    PdBase& operator=(const PdBase&) = delete;

    // Main thread.
    void setDelegate(PdReceiverDelegate* delegate);
    PdReceiverDelegate* delegate() const { return delegate_; }
    void subscribe(const std::string& source);
    std::optional<PatchHandle> openFile(const std::string& baseName, const std::string& directory);
    void closeFile(PatchHandle patch);
    void sendFloat(float value, std::string_view receiver) override;
    void sendBang(std::string_view receiver) override;
    // Delivers the messages the patch sent since the last call.
    void receiveMessages();

    // Prepares processing for the given channel counts and rate and turns
    // the DSP on. Main thread, while no audio thread is processing.
    bool initAudio(int inputChannels, int outputChannels, int sampleRate);

    // Audio thread. Processes ticks blocks of blockSize() frames,
    // interleaved. When the engine is busy with a main-thread operation, the
    // block is silent rather than late.
    void processFloat(int ticks, const float* input, float* output) noexcept;

    static int blockSize();

private:
    struct OutgoingMessage {
        std::array<char, 32> receiver{};
        float value = 0;
        bool isBang = false;
    };
    void enqueue(std::string_view receiver, float value, bool isBang);
    void applyPendingMessages() noexcept;

    static void onFloat(const char* source, float value);
    static void onPrint(const char* message);

    std::mutex engineMutex_; // held by the main thread while it changes the engine
    SpscQueue<OutgoingMessage, 256> outgoing_;
    PdReceiverDelegate* delegate_ = nullptr;
    std::vector<void*> bindings_;
    int outputChannels_ = 0;
};

} // namespace veltra
