#pragma once

#include <QString>

// How a huddle's media is made. The app takes the desktop's default
// microphone and speaker; test runs and benchmarks ask for a generated tone
// and decoded audio that is counted but not played, so they need neither a
// sound card nor a sound server.
struct NativeHuddleMedia {
    bool testSources = false;
    bool playAudio = true;
    // Without a microphone the huddle sends silence, muted.
    bool microphone = true;

    // Initialises GStreamer once, then checks that every plugin a huddle
    // needs is installed: empty when all are, otherwise the message to show,
    // naming the first missing plugin and its Debian package.
    [[nodiscard]] static QString missingPlugin();
    // Whether the desktop has any audio input; call after missingPlugin().
    [[nodiscard]] static bool hasMicrophone();
};
