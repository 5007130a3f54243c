#pragma once

#include <QByteArray>
#include <QString>

// The demo's call recordings: a few seconds of two alternating voices made
// from tones, as a 16-bit mono PCM WAV file at 8 kHz (the telephone rate).
// The same call always sounds the same, so a recording is made on request
// rather than stored.
namespace CallAudio {

constexpr int sampleRate = 8000;

[[nodiscard]] QByteArray wav(const QString &seed, int seconds);

} // namespace CallAudio
