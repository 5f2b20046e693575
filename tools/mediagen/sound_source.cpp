#include "tools/mediagen/sound_source.h"

#include <charconv>
#include <cmath>
#include <sstream>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_file.h"
#include "tools/mediagen/source_lines.h"

namespace mediagen {

namespace {

std::vector<std::string> Words(std::string_view value) {
    std::vector<std::string> words;
    std::istringstream in{std::string(value)};
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

struct Entry {
    std::string key;
    std::string value;
    int line = 0;
};

// Reads the values of one line, with the file and line at hand for errors.
class LineReader {
public:
    LineReader(const std::string& name, const Entry& entry) : name_(name), entry_(entry) {}

    [[noreturn]] void FailAt(const std::string& reason) const { mediagen::FailAt(name_, entry_.line, reason); }

    // Locale-free, and the whole word must be the number ("1.5s" is not).
    double Number(const std::string& word, double low, double high) const {
        const char* begin = word.data();
        const char* end = begin + word.size();
        if (begin < end && *begin == '+') ++begin;
        double value = 0;
        const auto [stop, error] = std::from_chars(begin, end, value);
        if (error != std::errc() || stop != end || !std::isfinite(value)) {
            FailAt(entry_.key + ": '" + word + "' is not a number");
        }
        if (value < low || value > high) {
            std::ostringstream range;
            range << entry_.key << ": " << word << " is outside " << low << " to " << high;
            FailAt(range.str());
        }
        return value;
    }

    std::vector<std::string> Values(size_t least, size_t most) const {
        const std::vector<std::string> words = Words(entry_.value);
        if (words.size() < least || words.size() > most) {
            FailAt(entry_.key + ": expected " + (least == most ? std::to_string(least)
                                                              : std::to_string(least) + " to " + std::to_string(most)) +
                 " values, found " + std::to_string(words.size()));
        }
        return words;
    }

    double One(double low, double high) const { return Number(Values(1, 1)[0], low, high); }
    int Whole(int low, int high) const {
        const double value = One(low, high);
        if (value != std::floor(value)) FailAt(entry_.key + ": expected a whole number, not " + entry_.value);
        return int(value);
    }

private:
    const std::string& name_;
    const Entry& entry_;
};

// "A2m": a note name, an optional sharp or flat, the octave (A4 = 440 Hz), and m for minor.
SoundChord ReadChord(const std::string& word, const LineReader& reader) {
    static const int kSteps[] = {9, 11, 0, 2, 4, 5, 7};  // A B C D E F G
    size_t at = 0;
    const char letter = at < word.size() ? word[at++] : '\0';
    if (letter < 'A' || letter > 'G') reader.FailAt("chords: '" + word + "' is not a chord like A2m or F3");
    int step = kSteps[letter - 'A'];
    if (at < word.size() && (word[at] == '#' || word[at] == 'b')) step += word[at++] == '#' ? 1 : -1;
    SoundChord chord;
    chord.minor = !word.empty() && word.back() == 'm';
    const std::string octave = word.substr(at, word.size() - at - (chord.minor ? 1 : 0));
    if (octave.size() != 1 || octave[0] < '0' || octave[0] > '7') {
        reader.FailAt("chords: '" + word + "' needs an octave from 0 to 7, like A2m");
    }
    chord.root = 12 * (octave[0] - '0' + 1) + step;
    return chord;
}

const char* KindKeys(SoundSource::Kind kind) {
    switch (kind) {
        case SoundSource::Kind::Hit: return "kind, channels, rate, length, peak, attack, seed, partial, noise";
        case SoundSource::Kind::Whoosh: return "kind, channels, rate, length, peak, attack, seed, band, top, q, pan";
        case SoundSource::Kind::Music:
            return "kind, channels, rate, peak, seed, tempo, bars, bars_per_chord, chords, pad, bass, arp, cutoff";
    }
    return "";
}

bool ReadCommon(SoundSource& sound, const Entry& entry, const LineReader& in) {
    const std::string& key = entry.key;
    if (key == "kind") return true;
    if (key == "channels") sound.channels = in.Whole(1, 2);
    else if (key == "rate") sound.rate = in.Whole(8000, 96000);
    else if (key == "peak") sound.peak = in.One(-40, 0);
    else if (key == "seed") sound.seed = uint32_t(in.Whole(0, 1000000000));
    else if (key == "length" && sound.kind != SoundSource::Kind::Music) sound.length = in.One(0.01, 30);
    else if (key == "attack" && sound.kind != SoundSource::Kind::Music) sound.attack = in.One(0.0001, 1);
    else return false;
    return true;
}

bool ReadHit(SoundSource& sound, const Entry& entry, const LineReader& in) {
    if (entry.key == "partial") {
        const std::vector<std::string> v = in.Values(3, 4);
        SoundPartial partial{in.Number(v[0], 20, 20000), in.Number(v[1], 0, 10), in.Number(v[2], 0.001, 30)};
        if (v.size() == 4) {
            if (v[3] != "sine" && v[3] != "square") in.FailAt("partial: the wave is sine or square, not '" + v[3] + "'");
            partial.square = v[3] == "square";
        }
        sound.partials.push_back(partial);
    } else if (entry.key == "noise") {
        const std::vector<std::string> v = in.Values(2, 2);
        sound.noiseLevel = in.Number(v[0], 0, 10);
        sound.noiseDecay = in.Number(v[1], 0.0005, 30);
    } else {
        return false;
    }
    return true;
}

bool ReadWhoosh(SoundSource& sound, const Entry& entry, const LineReader& in) {
    if (entry.key == "band") {
        const std::vector<std::string> v = in.Values(3, 3);
        sound.bandStart = in.Number(v[0], 20, 20000);
        sound.bandTop = in.Number(v[1], 20, 20000);
        sound.bandEnd = in.Number(v[2], 20, 20000);
    } else if (entry.key == "top") {
        sound.top = in.One(0.05, 0.95);
    } else if (entry.key == "q") {
        sound.q = in.One(0.3, 20);
    } else if (entry.key == "pan") {
        const std::vector<std::string> v = in.Values(2, 2);
        sound.panFrom = in.Number(v[0], -1, 1);
        sound.panTo = in.Number(v[1], -1, 1);
    } else {
        return false;
    }
    return true;
}

bool ReadMusic(SoundSource& sound, const Entry& entry, const LineReader& in) {
    const std::string& key = entry.key;
    if (key == "tempo") sound.tempo = in.One(30, 240);
    else if (key == "bars") sound.bars = in.Whole(1, 256);
    else if (key == "bars_per_chord") sound.barsPerChord = in.Whole(1, 16);
    else if (key == "pad") sound.pad = in.One(0, 10);
    else if (key == "bass") sound.bass = in.One(0, 10);
    else if (key == "arp") sound.arp = in.One(0, 10);
    else if (key == "cutoff") sound.cutoff = in.One(50, 10000);
    else if (key == "chords") {
        sound.chords.clear();
        for (const std::string& word : in.Values(1, 64)) sound.chords.push_back(ReadChord(word, in));
    } else {
        return false;
    }
    return true;
}

}  // namespace

SoundSource ParseSound(std::string_view text, const std::string& name) {
    std::vector<Entry> entries;
    const int number = ForEachKeyValue(text, name, [&](std::string_view key, std::string_view value, int line) {
        entries.push_back({std::string(key), std::string(value), line});
    });

    // The kind decides which other keys make sense, so it is read first wherever it stands.
    SoundSource sound;
    int kindLine = 0;
    for (const Entry& entry : entries) {
        if (entry.key != "kind") continue;
        if (kindLine != 0) FailAt(name, entry.line, "kind is already given on line " + std::to_string(kindLine));
        kindLine = entry.line;
        if (entry.value == "hit") sound.kind = SoundSource::Kind::Hit;
        else if (entry.value == "whoosh") sound.kind = SoundSource::Kind::Whoosh;
        else if (entry.value == "music") sound.kind = SoundSource::Kind::Music;
        else FailAt(name, entry.line, "kind is hit, whoosh or music, not '" + entry.value + "'");
    }
    if (kindLine == 0) FailAt(name, number, "no 'kind:' line");

    for (const Entry& entry : entries) {
        const LineReader in(name, entry);
        bool known = ReadCommon(sound, entry, in);
        if (!known && sound.kind == SoundSource::Kind::Hit) known = ReadHit(sound, entry, in);
        if (!known && sound.kind == SoundSource::Kind::Whoosh) known = ReadWhoosh(sound, entry, in);
        if (!known && sound.kind == SoundSource::Kind::Music) known = ReadMusic(sound, entry, in);
        if (!known) in.FailAt("unknown key '" + entry.key + "' (" + KindKeys(sound.kind) + ")");
    }

    if (sound.kind != SoundSource::Kind::Music && sound.length == 0) FailAt(name, number, "no 'length:' line");
    if (sound.kind == SoundSource::Kind::Hit && sound.partials.empty() && sound.noiseLevel == 0) {
        FailAt(name, number, "a hit needs a 'partial:' or 'noise:' line");
    }
    if (sound.kind == SoundSource::Kind::Music && sound.chords.empty()) FailAt(name, number, "no 'chords:' line");
    const double nyquist = sound.rate / 2.0;
    for (const SoundPartial& partial : sound.partials) {
        if (partial.frequency >= nyquist) FailAt(name, number, "a partial is above half the sample rate");
    }
    return sound;
}

SoundSource ReadSound(const std::filesystem::path& path) {
    return ParseSound(ReadSourceText(path, "sound source"), path.string());
}

}  // namespace mediagen
