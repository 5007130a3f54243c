#pragma once

#include <QString>

// How a huddle's media is made. The app takes the desktop's default
// microphone, speaker and camera and the screen it runs on; test runs and
// benchmarks ask for a generated tone and pictures and decoded audio that is
// counted but not played, so they need no sound card, camera or display.
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
    enum class Camera { Missing, Denied, Present };
    // Whether a camera is there and this user may open it.
    [[nodiscard]] static Camera findCamera();

    // Whether the person's desktop is a Wayland session, where only the
    // desktop portal's screen cast can see the screen.
    [[nodiscard]] static bool waylandSession();

    // The GStreamer source of the camera and of the screen; empty, with the
    // reason, when the screen cannot be captured here.
    [[nodiscard]] QString cameraSource() const;
    [[nodiscard]] QString screenSource(QString *error) const;
    // Whether the screen comes from a portal's screen cast, then read from
    // its PipeWire remote `fd` and stream `node` with pipeWireSource.
    [[nodiscard]] bool screenThroughPortal() const { return !testSources && waylandSession(); }
    [[nodiscard]] static QString pipeWireSource(int fd, quint32 node);
};
