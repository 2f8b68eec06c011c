#include "dsp/PdAudioController.h"

#include "dsp/AudioSession.h"
#include "dsp/FiniteSamples.h"
#include "dsp/PdBase.h"
#include "dsp/VectorState.h"
#include "settings/Fatal.h"

#include <cmath>
#include <thread>

namespace veltra {

PdAudioController::PdAudioController(PdBase& base, AudioBackend& backend, const AudioSession& session)
    : base_(base)
    , backend_(backend)
    , session_(session)
{
    if (PdBase::blockSize() != kMaxBlockFrames)
        fatalError("libpd block size differs from the audio controller's");
}

PdAudioController::~PdAudioController()
{
    backend_.close();
}

PdAudioStatus PdAudioController::configurePlayback(int sampleRate, int numberChannels, bool inputEnabled,
                                                   bool /*mixingEnabled*/)
{
    // Sharing the device with other programs is the sound server's business
    // on Linux; there is nothing to switch for mixing.
    setActive(false);
    backend_.close();
    stream_.reset();

    const AudioStreamConfig wanted{
        sampleRate, inputEnabled ? numberChannels : 0, kPatchOutputChannels,
        static_cast<unsigned>(std::lround(session_.preferredIOBufferDuration() * sampleRate))};
    const auto opened = backend_.open(wanted, *this);
    if (!std::holds_alternative<AudioStreamConfig>(opened))
        return PdAudioStatus::Error;
    const AudioStreamConfig granted = std::get<AudioStreamConfig>(opened);
    if (!base_.initAudio(inputEnabled ? 1 : 0, kPatchOutputChannels, granted.sampleRate)) {
        backend_.close();
        return PdAudioStatus::Error;
    }
    stream_ = granted;
    blockPosition_ = 0;
    blockIn_.fill(0);
    blockOut_.fill(0);
    return granted == wanted ? PdAudioStatus::OK : PdAudioStatus::PropertyChanged;
}

void PdAudioController::setActive(bool active)
{
    if (active == active_)
        return;
    if (!active) {
        backend_.stop();
        active_ = false;
        return;
    }
    // Without an open stream the back end refuses, and the controller stays inactive.
    active_ = backend_.start() && stream_.has_value();
}

bool PdAudioController::deviceLost() const
{
    return active_ && backend_.deviceLost();
}

void PdAudioController::setInputTap(AudioInputTap* tap)
{
    tap_.store(tap, std::memory_order_seq_cst);
    // A block may have loaded the old tap just before: wait it out. The wait
    // is on the main thread and lasts at most one tap call.
    while (tapping_.load(std::memory_order_acquire))
        std::this_thread::yield();
}

void PdAudioController::process(const float* input, float* output, unsigned frames) noexcept
{
    clearUpperVectorState();
    const int inChannels = stream_->inputChannels;
    const int outChannels = stream_->outputChannels;
    bool heard = false;
    for (unsigned frame = 0; frame < frames; ++frame) {
        // The patch reads microphone channel 1 only.
        const float in =
            input && inChannels > 0 ? finiteOrSilence(input[frame * static_cast<unsigned>(inChannels)]) : 0.0f;
        blockIn_[static_cast<std::size_t>(blockPosition_)] = in;
        heard = heard || in != 0.0f;
        if (output) {
            const float* patchFrame = &blockOut_[static_cast<std::size_t>(blockPosition_ * kPatchOutputChannels)];
            for (int c = 0; c < outChannels; ++c) {
                const float out = patchFrame[c < kPatchOutputChannels ? c : 0];
                output[frame * static_cast<unsigned>(outChannels) + static_cast<unsigned>(c)] = out;
                heard = heard || out != 0.0f;
            }
        }
        if (++blockPosition_ == kMaxBlockFrames) {
            base_.processFloat(1, blockIn_.data(), blockOut_.data());
            blockPosition_ = 0;
            tapping_.store(true, std::memory_order_seq_cst);
            if (AudioInputTap* tap = tap_.load(std::memory_order_seq_cst))
                tap->tapInput(blockIn_);
            tapping_.store(false, std::memory_order_release);
        }
    }
    if (heard)
        buffersHeard_.fetch_add(1, std::memory_order_relaxed);
}

} // namespace veltra
