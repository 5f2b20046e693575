#pragma once
#include "tools/mediagen/sound_source.h"
#include "tools/mediagen/wav_writer.h"

namespace mediagen {

// Renders a sound from its source. The same source gives the same samples on every run: noise
// comes from a generator seeded by the source, never from the clock.
//
// Hits and whooshes fade in over `attack`, fade out to silence at their end, carry no DC and
// peak at `peak` dBFS. Music loops sample-exactly: whatever rings past the last bar is laid over
// the first, so the last sample flows into the first as it would into the next bar.
Sound SynthesizeSound(const SoundSource& source);

}  // namespace mediagen
