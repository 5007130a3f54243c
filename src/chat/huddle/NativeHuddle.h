#pragma once

#include "chat/huddle/HuddleCall.h"
#include "chat/huddle/NativeHuddleCapture.h"
#include "chat/huddle/NativeHuddleMedia.h"
#include "chat/huddle/NativeHuddlePeer.h"
#include "chat/huddle/NativeScreenCastPortal.h"
#include "chat/huddle/TarnHuddleMarks.h"
#include "chat/huddle/TarnHuddleState.h"
#include "service/TarnDeleteLater.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>

#include <map>
#include <optional>

class NativeHuddleTrack;
class TarnAPI;

// The one object that owns a running huddle: it joins, long-polls the
// service, keeps one NativeHuddlePeer per other participant and carries out
// what HuddleCall decides, and publishes the status and notice texts and the
// microphone's state to the screens. Only one huddle runs at a time: joining
// another leaves the first. All of it lives on the thread that made it.
class NativeHuddle : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(QString endedReason READ endedReason NOTIFY changed)
    Q_PROPERTY(QString roomID READ roomID NOTIFY changed)
    Q_PROPERTY(bool running READ running NOTIFY changed)
    Q_PROPERTY(bool muted READ muted NOTIFY changed)
    Q_PROPERTY(bool cameraOn READ cameraOn NOTIFY changed)
    Q_PROPERTY(bool cameraChanging READ cameraChanging NOTIFY changed)
    Q_PROPERTY(bool screenOn READ screenOn NOTIFY changed)
    Q_PROPERTY(bool screenChanging READ screenChanging NOTIFY changed)

public:
    explicit NativeHuddle(NativeHuddleMedia media, QObject *parent = nullptr);
    ~NativeHuddle() override;

    // Starts the room's huddle or joins it, ringing `invite`.
    QCoro::Task<> join(QString roomID, TarnAPI &api, QList<QString> invite = {});
    QCoro::Task<> leave();
    // Flips the microphone track's enabled flag and reports it.
    QCoro::Task<> toggleMute();
    // Turns the camera (640x360 at 24 fps) on or off for everyone and reports it.
    QCoro::Task<> toggleCamera();
    // The same for the screen (1280x720 at 15 fps), once the person confirmed.
    QCoro::Task<> toggleScreen();
    // The huddles the person may see, for the room list.
    QCoro::Task<> refreshVisible(TarnAPI &api);

    [[nodiscard]] QString status() const { return m_call.status(); }
    [[nodiscard]] QString notice() const { return m_call.notice(); }
    [[nodiscard]] QString endedReason() const { return m_call.endedReason().value_or(QString()); }
    [[nodiscard]] QString roomID() const { return m_call.roomID().value_or(QString()); }
    [[nodiscard]] bool running() const { return m_call.isRunning(); }
    [[nodiscard]] bool muted() const { return m_muted; }
    [[nodiscard]] bool cameraOn() const { return m_camera.on; }
    [[nodiscard]] bool cameraChanging() const { return m_camera.changing; }
    [[nodiscard]] bool screenOn() const { return m_screen.on; }
    [[nodiscard]] bool screenChanging() const { return m_screen.changing; }
    // The camera or screen of the participant on `conn`, for NativeHuddleVideo;
    // null without a connection to them.
    [[nodiscard]] NativeHuddleTrack *videoTrack(const QString &conn, bool screen) const;
    // The person's own camera while it is on.
    [[nodiscard]] NativeHuddleTrack *selfView() { return m_camera.capture.preview(); }
    [[nodiscard]] const std::optional<TarnHuddleState> &state() const { return m_call.state(); }
    [[nodiscard]] const QList<TarnHuddleState> &visible() const { return m_visible; }
    // Decoded buffers of a participant's audio so far (0 without a connection).
    [[nodiscard]] qint64 decodedAudioFrom(const QString &userID) const;

Q_SIGNALS:
    void changed();
    void visibleChanged();
    void remoteAudioStarted(const QString &userID);

private:
    void run(const QList<HuddleCommand> &commands);
    void openPeer(const HuddleCommand &command);
    // Whether `peer` is still the connection the call has for its participant.
    [[nodiscard]] bool isCurrent(const NativeHuddlePeer *peer) const;
    QCoro::Task<> pollLoop(quint64 generation);
    QCoro::Task<> sendLoop(quint64 generation);
    QCoro::Task<> pause(int ms);
    QCoro::Task<> reportMuted(quint64 generation);
    // Reports marks; false when the service could not be told.
    QCoro::Task<bool> reportMarks(TarnHuddleMarks marks);
    QCoro::Task<> toggle(HuddleCommand::Track track);
    // The source to capture a track from, asking the desktop's portal for
    // the screen where it must; empty after a notice when there is none.
    QCoro::Task<QString> sourceOf(HuddleCommand::Track track);
    // The system ended a capture.
    void captureStopped(HuddleCommand::Track track, const QString &error);
    void stopCaptures();

    // A local video track: its capture and whether it is on or changing.
    struct Local {
        NativeHuddleCapture capture;
        bool on = false;
        bool changing = false;
    };

    const NativeHuddleMedia m_configured;
    // What this join uses: without a microphone, silence.
    NativeHuddleMedia m_media;
    HuddleCall m_call;
    QPointer<TarnAPI> m_api;
    std::map<QString, TarnLaterPointer<NativeHuddlePeer>> m_peers;
    // Signals go out one at a time, in the order the call made them.
    QList<HuddleCommand> m_outbox;
    bool m_sending = false;
    QSet<QString> m_batchDue;
    bool m_muted = false;
    QList<TarnHuddleState> m_visible;
    Local m_camera { .capture = NativeHuddleCapture(HuddleCommand::Track::Camera) };
    Local m_screen { .capture = NativeHuddleCapture(HuddleCommand::Track::Screen) };
    NativeScreenCastPortal m_portal;
    [[nodiscard]] Local &local(HuddleCommand::Track track)
    {
        return track == HuddleCommand::Track::Camera ? m_camera : m_screen;
    }
};
