#pragma once

#include "chat/huddle/HuddleCommand.h"
#include "chat/huddle/NativeGst.h"
#include "chat/huddle/NativeHuddleMedia.h"
#include "chat/huddle/TarnHuddleCandidate.h"
#include "chat/huddle/TarnHuddleDescription.h"
#include "chat/huddle/TarnHuddleIceServer.h"

class NativeHuddleCapture;
class NativeHuddleTrack;

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

// The media of one remote participant: a webrtcbin peer connection in a
// pipeline of its own, sending this side's microphone (opus), its camera
// and screen (VP8 from a NativeHuddleCapture) and playing what arrives:
// audio to the speaker, video to a NativeHuddleTrack per kind. It carries out
// HuddleCall's commands and reports back.
//
// webrtcbin calls back on GStreamer's threads. No callback touches this
// object: each hands its work to a Relay, which posts it to the thread this
// object lives on, and stops posting once the peer is being destroyed (its
// destructor stops the pipeline, so no callback is left running).
class NativeHuddlePeer : public QObject {
    Q_OBJECT

public:
    // The connection's life as the huddle cares about it.
    enum class Link { Connecting, Connected, Interrupted, Failed };

    NativeHuddlePeer(QString id, QString conn, const QList<TarnHuddleIceServer> &iceServers,
        const NativeHuddleMedia &media, bool muted, QObject *parent = nullptr);
    ~NativeHuddlePeer() override;

    // Builds and starts the pipeline; false with the reason when it cannot.
    [[nodiscard]] bool start(QString *error);

    void createOffer();
    void createAnswer();
    void setRemoteDescription(const TarnHuddleDescription &description);
    void addCandidate(const TarnHuddleCandidate &candidate);
    // The microphone track's enabled flag.
    void setMuted(bool muted);
    // Sends `capture`'s frames as `track`; true when that took a new track
    // (to negotiate), false when the track was there from an earlier time.
    bool sendVideo(HuddleCommand::Track track, NativeHuddleCapture &capture);
    // The element a capture feeds for `track`, if the track was ever added.
    [[nodiscard]] GstElement *videoSource(HuddleCommand::Track track) const;
    // Room for the participant's `track` in the next offer.
    void receive(HuddleCommand::Track track);
    // The participant's camera or screen as decoded so far.
    [[nodiscard]] NativeHuddleTrack *video(HuddleCommand::Track track) const;

    [[nodiscard]] const QString &id() const { return m_id; }
    [[nodiscard]] const QString &conn() const { return m_conn; }
    // Decoded buffers of the participant's audio so far.
    [[nodiscard]] qint64 decodedAudioBuffers() const;

Q_SIGNALS:
    // A local description was created and set; it is to be sent.
    void descriptionCreated(const TarnHuddleDescription &description);
    void localCandidate(const TarnHuddleCandidate &candidate);
    void linkChanged(NativeHuddlePeer::Link link);
    void remoteAudioStarted();

public:
    struct Relay;

private:
    void describe(bool offer);

    QString m_id;
    QString m_conn;
    QList<TarnHuddleIceServer> m_iceServers;
    NativeHuddleMedia m_media;
    bool m_muted = false;
    std::shared_ptr<Relay> m_relay;
    NativeGst::Element m_pipeline;
    NativeGst::Element m_webrtc;
    NativeGst::Element m_mic;
    NativeGst::Element m_cameraSource;
    NativeGst::Element m_screenSource;
    NativeHuddleTrack *m_camera;
    NativeHuddleTrack *m_screen;
};
