#pragma once
#include <memory>
#include <string>

// Where OpenAL mixes to: the default audio device, or, on a machine with no sound card or
// sound server, a loopback device whose mix the game renders and throws away. Either way every
// source plays, finishes in real time and is counted, so the game behaves the same.
class AudioOutput {
public:
    // Opens an output and makes its context current; null when none at all can be had (why is
    // then set). Tries the default device first; falls back to discarding and then sets note
    // to the one line the player should see on standard error.
    static std::unique_ptr<AudioOutput> Open(std::string& note, std::string& why);
    ~AudioOutput();
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    // True when nothing is heard: the mix is rendered and discarded.
    bool IsDiscarding() const;
    // Lets this much real time pass: a discarding output mixes it (at most a second at once,
    // so a long stall is not caught up on); a real device mixes on its own and ignores it.
    void Advance(double seconds);
    std::string DeviceName() const;

private:
    struct Device;
    explicit AudioOutput(std::unique_ptr<Device> device);
    std::unique_ptr<Device> device;
};
