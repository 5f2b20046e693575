#include "sound/audio_output.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {

constexpr ALCint kDiscardRate = 44100;
constexpr int kRenderChunk = 2048;  // frames mixed per call while discarding

// OpenAL and the sound libraries below it report every backend they probe on standard error;
// on a machine without sound that is a screenful for one fact. The probe runs with standard
// error closed unless the player asked OpenAL to log (ALSOFT_LOGLEVEL).
class QuietStandardError {
public:
    QuietStandardError() {
        if (std::getenv("ALSOFT_LOGLEVEL")) return;
        std::fflush(stderr);
        saved = dup(STDERR_FILENO);
        const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (saved >= 0 && null >= 0) dup2(null, STDERR_FILENO);
        if (null >= 0) close(null);
    }
    ~QuietStandardError() {
        if (saved < 0) return;
        std::fflush(stderr);
        dup2(saved, STDERR_FILENO);
        close(saved);
    }
    QuietStandardError(const QuietStandardError&) = delete;
    QuietStandardError& operator=(const QuietStandardError&) = delete;

private:
    int saved = -1;
};

}  // namespace

struct AudioOutput::Device {
    ALCdevice* device = nullptr;
    ALCcontext* context = nullptr;
    LPALCRENDERSAMPLESSOFT render = nullptr;  // set only when discarding
    double pendingFrames = 0;
    std::vector<ALshort> scratch;

    ~Device() {
        if (context) {
            alcMakeContextCurrent(nullptr);
            alcDestroyContext(context);
        }
        if (device) alcCloseDevice(device);
    }
};

namespace {

bool MakeContext(ALCdevice* device, const ALCint* attributes, ALCcontext*& context) {
    context = alcCreateContext(device, attributes);
    if (!context) return false;
    if (!alcMakeContextCurrent(context)) {
        alcDestroyContext(context);
        context = nullptr;
        return false;
    }
    return true;
}

}  // namespace

std::unique_ptr<AudioOutput> AudioOutput::Open(std::string& note, std::string& why) {
    auto out = std::make_unique<Device>();
    {
        QuietStandardError quiet;
        out->device = alcOpenDevice(nullptr);
    }
    if (out->device) {
        if (MakeContext(out->device, nullptr, out->context))
            return std::unique_ptr<AudioOutput>(new AudioOutput(std::move(out)));
        alcCloseDevice(std::exchange(out->device, nullptr));
    }

    if (!alcIsExtensionPresent(nullptr, "ALC_SOFT_loopback")) {
        why = "no audio device could be opened, and OpenAL cannot mix without one (no ALC_SOFT_loopback)";
        return nullptr;
    }
    auto openLoopback =
        reinterpret_cast<LPALCLOOPBACKOPENDEVICESOFT>(alcGetProcAddress(nullptr, "alcLoopbackOpenDeviceSOFT"));
    out->render = reinterpret_cast<LPALCRENDERSAMPLESSOFT>(alcGetProcAddress(nullptr, "alcRenderSamplesSOFT"));
    if (!openLoopback || !out->render || !(out->device = openLoopback(nullptr))) {
        why = "no audio device could be opened, nor OpenAL's loopback mixer";
        return nullptr;
    }
    const ALCint attributes[] = {ALC_FORMAT_CHANNELS_SOFT, ALC_STEREO_SOFT, ALC_FORMAT_TYPE_SOFT, ALC_SHORT_SOFT,
                                 ALC_FREQUENCY, kDiscardRate, 0};
    if (!MakeContext(out->device, attributes, out->context)) {
        why = "no audio device could be opened, and OpenAL's loopback mixer refused 16-bit stereo at 44100 Hz";
        return nullptr;
    }
    out->scratch.resize(size_t(kRenderChunk) * 2);
    note = "sound: no audio device or sound server could be opened, so the game plays silently "
           "(run with ALSOFT_LOGLEVEL=3 to see why)";
    return std::unique_ptr<AudioOutput>(new AudioOutput(std::move(out)));
}

AudioOutput::AudioOutput(std::unique_ptr<Device> device) : device(std::move(device)) {}

AudioOutput::~AudioOutput() = default;

bool AudioOutput::IsDiscarding() const { return device->render != nullptr; }

void AudioOutput::Advance(double seconds) {
    if (!device->render || !(seconds > 0)) return;
    device->pendingFrames += std::min(seconds, 1.0) * kDiscardRate;
    while (device->pendingFrames >= 1) {
        const int frames = int(std::min<double>(device->pendingFrames, kRenderChunk));
        device->render(device->device, device->scratch.data(), frames);
        device->pendingFrames -= frames;
    }
}

std::string AudioOutput::DeviceName() const {
    const ALCchar* name = alcGetString(device->device, ALC_DEVICE_SPECIFIER);
    return name ? name : "";
}
