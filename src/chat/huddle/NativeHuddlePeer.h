#pragma once

#include "chat/huddle/NativeGst.h"
#include "chat/huddle/NativeHuddleMedia.h"
#include "chat/huddle/TarnHuddleCandidate.h"
#include "chat/huddle/TarnHuddleDescription.h"
#include "chat/huddle/TarnHuddleIceServer.h"

#include <QList>
#include <QObject>
#include <QString>

#include <memory>

// The media of one remote participant: a webrtcbin peer connection in a
// pipeline of its own, sending this side's microphone (opus) and playing
// what arrives. It carries out HuddleCall's commands and reports back.
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
};
