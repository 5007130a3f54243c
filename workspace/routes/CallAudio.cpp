#include "workspace/routes/CallAudio.h"

#include <QtEndian>

#include <cmath>
#include <numbers>

namespace {

// A small generator of its own, so that a seed gives the same sound on every
// machine and Qt version.
class Noise {
public:
    explicit Noise(size_t seed)
        : m_state(seed | 1U)
    {
    }
    double next()
    {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return double(m_state >> 11) / double(1ULL << 53);
    }

private:
    quint64 m_state;
};

void put16(QByteArray &out, quint16 value)
{
    char bytes[2];
    qToLittleEndian(value, bytes);
    out.append(bytes, 2);
}

void put32(QByteArray &out, quint32 value)
{
    char bytes[4];
    qToLittleEndian(value, bytes);
    out.append(bytes, 4);
}

} // namespace

namespace CallAudio {

QByteArray wav(const QString &seed, int seconds)
{
    const int samples = sampleRate * seconds;
    Noise noise(qHash(seed));
    QByteArray pcm;
    pcm.reserve(samples * 2);
    // Turns of speech: each a voice (its pitch), a length and a pause after.
    const double voices[2] = { 110 + 30 * noise.next(), 190 + 40 * noise.next() };
    int speaker = 0;
    int turnLeft = 0;
    int pauseLeft = 0;
    double phase = 0;
    for (int i = 0; i < samples; ++i) {
        if (turnLeft == 0 && pauseLeft == 0) {
            speaker = 1 - speaker;
            turnLeft = int(sampleRate * (0.6 + 0.9 * noise.next()));
            pauseLeft = int(sampleRate * (0.1 + 0.25 * noise.next()));
        }
        double value = 0;
        if (turnLeft > 0) {
            --turnLeft;
            const double t = double(i) / sampleRate;
            // Syllables at about four a second, with a drifting pitch.
            const double syllable = std::pow(std::sin(std::numbers::pi * 4.2 * t), 2);
            const double pitch = voices[speaker] * (1 + 0.08 * std::sin(2 * std::numbers::pi * 1.3 * t));
            phase += 2 * std::numbers::pi * pitch / sampleRate;
            for (int harmonic = 1; harmonic <= 4; ++harmonic)
                value += std::sin(phase * harmonic) / (harmonic * 1.6);
            value *= syllable * 0.35;
        } else {
            --pauseLeft;
        }
        value += (noise.next() - 0.5) * 0.01; // the line's hiss
        put16(pcm, quint16(qint16(std::clamp(value, -1.0, 1.0) * 32000)));
    }

    QByteArray out;
    out.reserve(44 + pcm.size());
    out.append("RIFF");
    put32(out, quint32(36 + pcm.size()));
    out.append("WAVEfmt ");
    put32(out, 16);
    put16(out, 1); // PCM
    put16(out, 1); // mono
    put32(out, sampleRate);
    put32(out, sampleRate * 2);
    put16(out, 2);
    put16(out, 16);
    out.append("data");
    put32(out, quint32(pcm.size()));
    out.append(pcm);
    return out;
}

} // namespace CallAudio
