#pragma once

#include "chat/huddle/HuddleCommand.h"
#include "chat/huddle/NativeGst.h"
#include "chat/huddle/NativeHuddleTrack.h"

#include <QObject>
#include <QString>

#include <memory>

// One local video track (the camera or the screen), captured and encoded
// once however many participants receive it: its VP8 frames are handed to
// each peer's source element, so a mesh costs one encoder, not one per peer.
// A peer that starts receiving waits for a key frame, and asks for one, as
// does a receiver that lost frames.
//
// The pipeline's messages arrive on GStreamer's threads and are posted to
// this object's thread; `stopped` says the system ended the capture (the
// camera unplugged, a screen cast closed) or it failed.
class NativeHuddleCapture : public QObject {
    Q_OBJECT

public:
    explicit NativeHuddleCapture(HuddleCommand::Track track, QObject *parent = nullptr);
    ~NativeHuddleCapture() override;

    // Starts capturing from `source`, a GStreamer source description;
    // false with the reason when it cannot.
    [[nodiscard]] bool start(const QString &source, QString *error);
    void stop();
    [[nodiscard]] bool running() const { return bool(m_pipeline); }

    // Sends the encoded frames to `appsrc` (a peer's) until unfed.
    void feed(GstElement *appsrc);
    void unfeed(GstElement *appsrc);
    // What is being captured, as the person sees themselves (the camera only).
    [[nodiscard]] NativeHuddleTrack *preview() { return &m_preview; }

    // What a track sends: its size, rate and bit rate.
    struct Format {
        int width;
        int height;
        int fps;
        int kbps;
    };
    [[nodiscard]] static Format formatOf(HuddleCommand::Track track);

    struct Shared;

Q_SIGNALS:
    // Ended while running: `error` is empty when the source simply ended.
    void stopped(const QString &error);

private:
    HuddleCommand::Track m_track;
    NativeHuddleTrack m_preview;
    std::shared_ptr<Shared> m_shared;
    NativeGst::Element m_pipeline;
};
