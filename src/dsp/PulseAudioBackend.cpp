#include "dsp/PulseAudioBackend.h"

#include <pulse/pulseaudio.h>

#include <pthread.h>
#include <sched.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace veltra {

namespace {

// How long a control step (connecting, opening, listing) may wait for the
// server before it counts as not answering.
constexpr double kServerTimeoutSeconds = 2.0;

// Buffers of silence written after the last sound before playback pauses:
// enough for the queue and the sink to play out what they hold.
constexpr unsigned kSilentBuffersBeforePause = 8;

// A modest real-time priority, the kind desktop policies grant to audio.
constexpr int kRealtimePriority = 5;

class MainloopLock {
public:
    explicit MainloopLock(pa_threaded_mainloop* mainloop)
        : mainloop_(mainloop)
    {
        pa_threaded_mainloop_lock(mainloop_);
    }
    ~MainloopLock() { pa_threaded_mainloop_unlock(mainloop_); }
    MainloopLock(const MainloopLock&) = delete;
    MainloopLock& operator=(const MainloopLock&) = delete;

private:
    pa_threaded_mainloop* mainloop_;
};

void forget(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

// Real time keeps the tone and the readings steady on a busy machine. Most
// desktops refuse it to ordinary processes; then the thread runs as before.
void askForRealtime()
{
    sched_param param{};
    param.sched_priority = kRealtimePriority;
    pthread_setschedparam(pthread_self(), SCHED_FIFO | SCHED_RESET_ON_FORK, &param);
}

// What the server's introspection calls collect for devices().
struct DeviceListing {
    pa_threaded_mainloop* mainloop;
    std::vector<AudioDevice> devices;
    std::string defaultSource;
    std::string defaultSink;
    int pending = 3; // server info, sources, sinks

    void add(const char* name, const char* description, unsigned in, unsigned out, const pa_sample_spec& format)
    {
        devices.push_back({static_cast<unsigned>(devices.size()), description && *description ? description : name,
                           in, out, false, false, {format.rate}, name});
    }
    void finished()
    {
        --pending;
        pa_threaded_mainloop_signal(mainloop, 0);
    }
};

void onServerInfo(pa_context*, const pa_server_info* info, void* userdata)
{
    auto* listing = static_cast<DeviceListing*>(userdata);
    if (info) {
        listing->defaultSource = info->default_source_name ? info->default_source_name : "";
        listing->defaultSink = info->default_sink_name ? info->default_sink_name : "";
    }
    listing->finished();
}

void onSourceInfo(pa_context*, const pa_source_info* info, int eol, void* userdata)
{
    auto* listing = static_cast<DeviceListing*>(userdata);
    if (eol)
        return listing->finished();
    listing->add(info->name, info->description, info->sample_spec.channels, 0, info->sample_spec);
}

void onSinkInfo(pa_context*, const pa_sink_info* info, int eol, void* userdata)
{
    auto* listing = static_cast<DeviceListing*>(userdata);
    if (eol)
        return listing->finished();
    listing->add(info->name, info->description, 0, info->sample_spec.channels, info->sample_spec);
}

} // namespace

std::unique_ptr<PulseAudioBackend> PulseAudioBackend::connect(double timeoutSeconds)
{
    std::unique_ptr<PulseAudioBackend> backend(new PulseAudioBackend);
    if (!backend->mainloop_)
        return nullptr;
    MainloopLock lock(backend->mainloop_);
    if (!backend->connectContext(timeoutSeconds))
        return nullptr;
    return backend;
}

std::unique_ptr<PulseAudioBackend> PulseAudioBackend::make()
{
    std::unique_ptr<PulseAudioBackend> backend(new PulseAudioBackend);
    return backend->mainloop_ ? std::move(backend) : nullptr;
}

PulseAudioBackend::PulseAudioBackend()
{
    mainloop_ = pa_threaded_mainloop_new();
    if (!mainloop_)
        return;
    // Named before it starts: naming a running loop renames the caller.
    pa_threaded_mainloop_set_name(mainloop_, "veltra-audio");
    if (pa_threaded_mainloop_start(mainloop_) < 0) {
        pa_threaded_mainloop_free(mainloop_);
        mainloop_ = nullptr;
    }
}

PulseAudioBackend::~PulseAudioBackend()
{
    if (!mainloop_)
        return;
    close();
    {
        MainloopLock lock(mainloop_);
        dropContext();
    }
    pa_threaded_mainloop_stop(mainloop_);
    pa_threaded_mainloop_free(mainloop_);
}

bool PulseAudioBackend::connectContext(double timeoutSeconds)
{
    dropContext();
    context_ = pa_context_new(pa_threaded_mainloop_get_api(mainloop_), "Veltra");
    if (!context_)
        return false;
    pa_context_set_state_callback(context_, &PulseAudioBackend::onContextState, this);
    if (pa_context_connect(context_, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        dropContext();
        return false;
    }
    const bool ready = waitUntil(
        [this] {
            const pa_context_state_t state = pa_context_get_state(context_);
            return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
        },
        timeoutSeconds);
    if (!ready || pa_context_get_state(context_) != PA_CONTEXT_READY) {
        dropContext();
        return false;
    }
    // The server tells us when its default source or sink changes, and when
    // a source comes or goes (the chosen input among them).
    pa_context_set_subscribe_callback(context_, &PulseAudioBackend::onServerEvent, this);
    forget(pa_context_subscribe(context_, static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SOURCE),
                                nullptr, nullptr));
    return true;
}

bool PulseAudioBackend::ensureContext()
{
    return (context_ && pa_context_get_state(context_) == PA_CONTEXT_READY) || connectContext(kServerTimeoutSeconds);
}

void PulseAudioBackend::dropContext()
{
    if (!context_)
        return;
    pa_context_set_state_callback(context_, nullptr, nullptr);
    pa_context_set_subscribe_callback(context_, nullptr, nullptr);
    pa_context_disconnect(context_);
    pa_context_unref(context_);
    context_ = nullptr;
}

bool PulseAudioBackend::waitUntil(const std::function<bool()>& done, double timeoutSeconds)
{
    struct Timer {
        pa_threaded_mainloop* mainloop;
        bool expired = false;
    } timer{mainloop_};
    pa_time_event* event = pa_context_rttime_new(
        context_, pa_rtclock_now() + static_cast<pa_usec_t>(timeoutSeconds * PA_USEC_PER_SEC),
        [](pa_mainloop_api*, pa_time_event*, const timeval*, void* userdata) {
            auto* t = static_cast<Timer*>(userdata);
            t->expired = true;
            pa_threaded_mainloop_signal(t->mainloop, 0);
        },
        &timer);
    if (!event)
        return done();
    while (!done() && !timer.expired)
        pa_threaded_mainloop_wait(mainloop_);
    pa_threaded_mainloop_get_api(mainloop_)->time_free(event);
    return done();
}

bool PulseAudioBackend::reachable()
{
    MainloopLock lock(mainloop_);
    return ensureContext();
}

std::vector<AudioDevice> PulseAudioBackend::devices()
{
    MainloopLock lock(mainloop_);
    if (!ensureContext())
        return {};
    return queryDevices();
}

std::vector<AudioDevice> PulseAudioBackend::queryDevices()
{
    DeviceListing listing{mainloop_, {}, {}, {}};
    pa_operation* operations[] = {
        pa_context_get_server_info(context_, &onServerInfo, &listing),
        pa_context_get_source_info_list(context_, &onSourceInfo, &listing),
        pa_context_get_sink_info_list(context_, &onSinkInfo, &listing),
    };
    waitUntil([&] { return listing.pending <= 0 || !PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)); },
              kServerTimeoutSeconds);
    // An answer still on its way must not reach the listing once it is gone.
    for (pa_operation* operation : operations) {
        if (operation && pa_operation_get_state(operation) == PA_OPERATION_RUNNING)
            pa_operation_cancel(operation);
        forget(operation);
    }
    if (listing.pending > 0)
        return {};
    for (std::size_t i = 0; i < listing.devices.size(); ++i) {
        AudioDevice& device = listing.devices[i];
        device.isDefaultInput = device.inputChannels > 0 && device.identifier == listing.defaultSource;
        device.isDefaultOutput = device.outputChannels > 0 && device.identifier == listing.defaultSink;
    }
    return listing.devices;
}

pa_stream* PulseAudioBackend::newStream(const char* name, int channels, int rate)
{
    const pa_sample_spec spec{PA_SAMPLE_FLOAT32NE, static_cast<uint32_t>(rate), static_cast<uint8_t>(channels)};
    pa_channel_map map;
    pa_channel_map_init_extend(&map, static_cast<unsigned>(channels), PA_CHANNEL_MAP_DEFAULT);
    pa_stream* stream = pa_stream_new(context_, name, &spec, &map);
    if (stream)
        pa_stream_set_state_callback(stream, &PulseAudioBackend::onStreamState, this);
    return stream;
}

void PulseAudioBackend::dropStream(pa_stream*& stream)
{
    if (!stream)
        return;
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    if (PA_STREAM_IS_GOOD(pa_stream_get_state(stream)))
        pa_stream_disconnect(stream);
    pa_stream_unref(stream);
    stream = nullptr;
}

std::variant<AudioStreamConfig, std::string> PulseAudioBackend::open(const AudioStreamConfig& wanted,
                                                                     AudioProcessor& processor)
{
    close();
    MainloopLock lock(mainloop_);
    // Each stream on a connection of its own: what failed may be the
    // connection rather than the stream. After its source was suspended and
    // resumed, PipeWire 0.3.65 feeds silence to every record stream of a
    // client that was connected before, new streams included; a new
    // connection hears. Connecting costs a few milliseconds, once per open.
    if (!connectContext(kServerTimeoutSeconds))
        return std::string("the PulseAudio server does not answer");
    const auto all = queryDevices();
    const auto has = [&all](unsigned AudioDevice::*channels) {
        return std::any_of(all.begin(), all.end(), [channels](const AudioDevice& d) { return d.*channels > 0; });
    };
    if (!has(&AudioDevice::inputChannels))
        return std::string("no audio input device");
    const bool chosenHere = std::any_of(all.begin(), all.end(), [this](const AudioDevice& d) {
        return d.inputChannels > 0 && !chosenInput_.empty() && d.identifier == chosenInput_;
    });
    fallback_.store(!chosenInput_.empty() && !chosenHere);

    // The server converts rate and channels, so the shape asked for is the
    // one granted, but for the buffer and a missing output.
    AudioStreamConfig granted = wanted;
    granted.outputChannels = has(&AudioDevice::outputChannels) ? wanted.outputChannels : 0;
    passInput_ = wanted.inputChannels > 0;
    inChannels_ = passInput_ ? static_cast<unsigned>(wanted.inputChannels) : 1;
    outChannels_ = static_cast<unsigned>(granted.outputChannels);
    const uint32_t frames = std::max(wanted.bufferFrames, kMinimumBufferFrames);
    const uint32_t inFrameBytes = inChannels_ * sizeof(float);
    const uint32_t outFrameBytes = outChannels_ * sizeof(float);
    constexpr uint32_t kServerChooses = static_cast<uint32_t>(-1);

    // Fragments of one buffer; with latency adjustment the source itself
    // runs at that buffer, so a fragment comes as soon as it is captured.
    const pa_buffer_attr recordAttr{kServerChooses, kServerChooses, kServerChooses, kServerChooses,
                                    frames * inFrameBytes};
    record_ = newStream("Veltra input", static_cast<int>(inChannels_), wanted.sampleRate);
    if (!record_)
        return "the sound server refused the stream: " + std::string(pa_strerror(pa_context_errno(context_)));
    pa_stream_set_read_callback(record_, &PulseAudioBackend::onReadable, this);
    constexpr auto kFlags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_START_CORKED);
    bool connected =
        pa_stream_connect_record(record_, chosenHere ? chosenInput_.c_str() : nullptr, &recordAttr, kFlags) == 0;

    // Three buffers between the patch and the speaker: with latency
    // adjustment the server gives the sink one (asked length less two
    // requests, halved) and our queue two. start() fills the queue with
    // silence; as whole buffers come and go it then holds one to two, which
    // rides out a late wake-up. With less (one and a half in the queue) a
    // loopback underran several times a second. After an underrun playback
    // resumes once half a buffer is queued, so the gap ends at the next
    // write and the cushion comes back with it; with no pre-buffering the
    // server would run on ahead of the queue, leaving it emptier each time.
    if (connected && outChannels_ > 0) {
        const uint32_t bufferBytes = frames * outFrameBytes;
        const pa_buffer_attr playbackAttr{kServerChooses, 3 * bufferBytes, bufferBytes / 2, bufferBytes / 2,
                                          kServerChooses};
        playback_ = newStream("Veltra output", static_cast<int>(outChannels_), wanted.sampleRate);
        connected = playback_ &&
                    pa_stream_connect_playback(playback_, nullptr, &playbackAttr, kFlags, nullptr, nullptr) == 0;
    }
    const auto settled = [](pa_stream* s) { return !s || pa_stream_get_state(s) != PA_STREAM_CREATING; };
    const auto ready = [](pa_stream* s) { return !s || pa_stream_get_state(s) == PA_STREAM_READY; };
    connected = connected &&
                waitUntil([&] { return settled(record_) && settled(playback_); }, kServerTimeoutSeconds) &&
                ready(record_) && ready(playback_);
    if (!connected) {
        const std::string reason = pa_strerror(pa_context_errno(context_));
        dropStream(record_);
        dropStream(playback_);
        return "the sound server refused the stream: " + reason;
    }

    const uint32_t fragmentFrames = pa_stream_get_buffer_attr(record_)->fragsize / inFrameBytes;
    granted.bufferFrames = fragmentFrames > 0 ? fragmentFrames : frames;
    chunkFrames_ = granted.bufferFrames;
    input_.assign(chunkFrames_ * inChannels_, 0.0f);
    output_.assign(chunkFrames_ * outChannels_, 0.0f);
    silence_.assign(output_.size(), 0.0f);
    processor_ = &processor;
    lost_.store(false);
    return granted;
}

void PulseAudioBackend::setCorked(bool corked)
{
    for (pa_stream* stream : {record_, playback_})
        if (stream)
            forget(pa_stream_cork(stream, corked ? 1 : 0, nullptr, nullptr));
}

bool PulseAudioBackend::start()
{
    MainloopLock lock(mainloop_);
    if (!record_ || lost_.load())
        return false;
    // What was captured or queued before a stop is stale now.
    for (pa_stream* stream : {record_, playback_})
        if (stream)
            forget(pa_stream_flush(stream, nullptr, nullptr));
    filled_ = 0;
    silentBuffers_ = 0;
    playbackCorked_ = false;
    if (playback_)
        primePlayback();
    running_.store(true);
    setCorked(false);
    return true;
}

void PulseAudioBackend::stop()
{
    MainloopLock lock(mainloop_);
    running_.store(false);
    setCorked(true);
}

void PulseAudioBackend::close()
{
    MainloopLock lock(mainloop_);
    running_.store(false);
    dropStream(record_);
    dropStream(playback_);
    processor_ = nullptr;
    // A connection that failed is made anew by the next open().
    if (context_ && !PA_CONTEXT_IS_GOOD(pa_context_get_state(context_)))
        dropContext();
}

bool PulseAudioBackend::isRunning() const
{
    return running_.load() && !lost_.load();
}

bool PulseAudioBackend::deviceLost() const
{
    return lost_.load();
}

void PulseAudioBackend::chooseInput(const std::string& identifier)
{
    MainloopLock lock(mainloop_);
    chosenInput_ = identifier;
}

bool PulseAudioBackend::inputFallback() const
{
    return fallback_.load();
}

void PulseAudioBackend::onContextState(pa_context* context, void* self)
{
    auto* backend = static_cast<PulseAudioBackend*>(self);
    const pa_context_state_t state = pa_context_get_state(context);
    if (state == PA_CONTEXT_READY)
        askForRealtime(); // this is the client thread, the one that runs the processor
    if (!PA_CONTEXT_IS_GOOD(state))
        backend->lost_.store(true);
    pa_threaded_mainloop_signal(backend->mainloop_, 0);
}

void PulseAudioBackend::onStreamState(pa_stream* stream, void* self)
{
    auto* backend = static_cast<PulseAudioBackend*>(self);
    if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream)))
        backend->lost_.store(true);
    pa_threaded_mainloop_signal(backend->mainloop_, 0);
}

void PulseAudioBackend::onServerEvent(pa_context* context, pa_subscription_event_type_t event, uint32_t, void* self)
{
    auto* backend = static_cast<PulseAudioBackend*>(self);
    const auto facility = event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK;
    const auto type = event & PA_SUBSCRIPTION_EVENT_TYPE_MASK;
    if (facility == PA_SUBSCRIPTION_EVENT_SERVER)
        forget(pa_context_get_server_info(context, &PulseAudioBackend::onServerDefaults, self));
    // A source came or went: is the chosen one there, and are we on it?
    else if (facility == PA_SUBSCRIPTION_EVENT_SOURCE && type != PA_SUBSCRIPTION_EVENT_CHANGE &&
             !backend->chosenInput_.empty() && backend->record_)
        forget(pa_context_get_source_info_by_name(context, backend->chosenInput_.c_str(),
                                                  &PulseAudioBackend::onChosenSource, self));
}

// Removing a source moves the streams on it to the default (or ends them,
// and the owner opens anew, on the default); when the chosen source
// appears again, the record stream goes back to it.
void PulseAudioBackend::onChosenSource(pa_context* context, const pa_source_info* info, int eol, void* self)
{
    auto* backend = static_cast<PulseAudioBackend*>(self);
    if (eol < 0) { // the server has no source of that name
        backend->fallback_.store(true);
        return;
    }
    pa_stream* record = backend->record_;
    if (!info || !record || pa_stream_get_state(record) != PA_STREAM_READY)
        return;
    if (pa_stream_get_device_index(record) == info->index)
        backend->fallback_.store(false);
    else
        forget(pa_context_move_source_output_by_index(context, pa_stream_get_index(record), info->index,
                                                       &PulseAudioBackend::onMovedToChosen, self));
}

void PulseAudioBackend::onMovedToChosen(pa_context*, int success, void* self)
{
    if (success)
        static_cast<PulseAudioBackend*>(self)->fallback_.store(false);
}

// Our streams are opened on the default source and sink and stay with them
// when the user picks others (a headset plugged in, a choice in the sound
// settings). Servers since PulseAudio 14 move such streams themselves;
// asking again costs nothing there and covers older ones. A record stream
// on the chosen input stays there.
void PulseAudioBackend::onServerDefaults(pa_context* context, const pa_server_info* info, void* self)
{
    auto* backend = static_cast<PulseAudioBackend*>(self);
    const auto elsewhere = [](pa_stream* stream, const char* wanted) {
        if (!stream || !wanted || !*wanted || pa_stream_get_state(stream) != PA_STREAM_READY)
            return false;
        const char* device = pa_stream_get_device_name(stream);
        return device && std::strcmp(device, wanted) != 0;
    };
    if (!info)
        return;
    const bool onChosen = !backend->chosenInput_.empty() && !backend->fallback_.load();
    if (!onChosen && elsewhere(backend->record_, info->default_source_name))
        forget(pa_context_move_source_output_by_name(context, pa_stream_get_index(backend->record_),
                                                      info->default_source_name, nullptr, nullptr));
    if (elsewhere(backend->playback_, info->default_sink_name))
        forget(pa_context_move_sink_input_by_name(context, pa_stream_get_index(backend->playback_),
                                                   info->default_sink_name, nullptr, nullptr));
}

void PulseAudioBackend::onReadable(pa_stream* stream, std::size_t, void* self)
{
    auto* backend = static_cast<PulseAudioBackend*>(self);
    const void* data = nullptr;
    std::size_t bytes = 0;
    while (pa_stream_peek(stream, &data, &bytes) == 0 && bytes > 0) {
        // A hole (data null) is captured silence.
        if (backend->running_.load(std::memory_order_relaxed))
            backend->takeFragment(static_cast<const float*>(data), bytes / (backend->inChannels_ * sizeof(float)));
        pa_stream_drop(stream);
    }
}

void PulseAudioBackend::takeFragment(const float* input, std::size_t frames) noexcept
{
    while (frames > 0) {
        const std::size_t n = std::min(frames, chunkFrames_ - filled_);
        float* to = input_.data() + filled_ * inChannels_;
        if (input) {
            std::copy_n(input, n * inChannels_, to);
            input += n * inChannels_;
        } else {
            std::fill_n(to, n * inChannels_, 0.0f);
        }
        filled_ += n;
        frames -= n;
        if (filled_ == chunkFrames_) {
            filled_ = 0;
            processor_->process(passInput_ ? input_.data() : nullptr, playback_ ? output_.data() : nullptr,
                                static_cast<unsigned>(chunkFrames_));
            if (playback_)
                followOutput();
        }
    }
}

// Pausing and resuming each send one request to the server (and allocate
// it), on this thread; that happens when a tone starts or ends, not per
// buffer.
void PulseAudioBackend::followOutput() noexcept
{
    const bool silent = std::all_of(output_.begin(), output_.end(), [](float s) { return s == 0.0f; });
    if (silent) {
        if (playbackCorked_)
            return;
        if (++silentBuffers_ >= kSilentBuffersBeforePause) {
            playbackCorked_ = true;
            forget(pa_stream_cork(playback_, 1, nullptr, nullptr));
            return;
        }
    } else {
        silentBuffers_ = 0;
        if (playbackCorked_) {
            // What the queue held is silence by now; one buffer of it goes
            // first again, the cushion start() gives.
            forget(pa_stream_flush(playback_, nullptr, nullptr));
            writeOutput(silence_.data(), chunkFrames_);
            playbackCorked_ = false;
            forget(pa_stream_cork(playback_, 0, nullptr, nullptr));
        }
    }
    writeOutput(output_.data(), chunkFrames_);
}

void PulseAudioBackend::primePlayback() noexcept
{
    while (writeOutput(silence_.data(), chunkFrames_) > 0) {
    }
}

std::size_t PulseAudioBackend::writeOutput(const float* samples, std::size_t frames) noexcept
{
    const std::size_t frameBytes = outChannels_ * sizeof(float);
    const std::size_t wanted = std::min(frames * frameBytes, pa_stream_writable_size(playback_));
    if (wanted < frameBytes)
        return 0; // the queue is full: this output is dropped
    void* buffer = nullptr;
    std::size_t bytes = wanted;
    if (pa_stream_begin_write(playback_, &buffer, &bytes) < 0 || !buffer)
        return 0;
    bytes = std::min(bytes, wanted);
    bytes -= bytes % frameBytes;
    if (bytes == 0) {
        pa_stream_cancel_write(playback_);
        return 0;
    }
    std::memcpy(buffer, samples, bytes);
    return pa_stream_write(playback_, buffer, bytes, nullptr, 0, PA_SEEK_RELATIVE) == 0 ? bytes / frameBytes : 0;
}

} // namespace veltra
