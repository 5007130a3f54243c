#pragma once

#include "chat/huddle/NativeHuddle.h"
#include "chat/huddle/NativeHuddleParticipants.h"
#include "chat/huddle/NativeHuddleTrack.h"

#include <QObject>
#include <QString>
#include <QStringList>

class TarnAPI;

// The window's one huddle as the screens see it: the bar at the window's
// root and the chat room's header draw it and forward the person's actions.
// It lives as long as the window; signing out leaves the huddle.
class NativeHuddleView : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(QString notice READ notice NOTIFY changed)
    Q_PROPERTY(QString roomID READ roomID NOTIFY changed)
    Q_PROPERTY(QString roomName READ roomName NOTIFY changed)
    Q_PROPERTY(bool running READ running NOTIFY changed)
    Q_PROPERTY(bool muted READ muted NOTIFY changed)
    Q_PROPERTY(bool cameraOn READ cameraOn NOTIFY changed)
    Q_PROPERTY(bool cameraChanging READ cameraChanging NOTIFY changed)
    Q_PROPERTY(bool screenOn READ screenOn NOTIFY changed)
    Q_PROPERTY(bool screenChanging READ screenChanging NOTIFY changed)
    Q_PROPERTY(QObject *participants READ participants CONSTANT)
    // The signed-in person's user id, whose own row draws no tile.
    Q_PROPERTY(QString selfID READ selfID NOTIFY changed)
    // The person's own camera, drawn beside the others' while it is on.
    Q_PROPERTY(NativeHuddleTrack *selfView READ selfView CONSTANT)
    // Ids of the rooms whose huddle is live, from the last refreshVisible().
    Q_PROPERTY(QStringList liveRooms READ liveRooms NOTIFY liveRoomsChanged)

public:
    NativeHuddleView(TarnAPI &api, NativeHuddleMedia media, QObject *parent = nullptr);

    [[nodiscard]] QString status() const { return m_huddle.status(); }
    [[nodiscard]] QString notice() const { return m_huddle.notice(); }
    [[nodiscard]] QString roomID() const { return m_huddle.roomID(); }
    [[nodiscard]] QString roomName() const;
    [[nodiscard]] QString selfID() const;
    [[nodiscard]] NativeHuddleTrack *selfView() { return m_huddle.selfView(); }
    [[nodiscard]] bool running() const { return m_huddle.running(); }
    [[nodiscard]] bool muted() const { return m_huddle.muted(); }
    [[nodiscard]] bool cameraOn() const { return m_huddle.cameraOn(); }
    [[nodiscard]] bool cameraChanging() const { return m_huddle.cameraChanging(); }
    [[nodiscard]] bool screenOn() const { return m_huddle.screenOn(); }
    [[nodiscard]] bool screenChanging() const { return m_huddle.screenChanging(); }
    // The camera or screen of the participant on `conn`, for a video tile.
    [[nodiscard]] Q_INVOKABLE NativeHuddleTrack *videoTrack(const QString &conn, bool screen) const
    {
        return m_huddle.videoTrack(conn, screen);
    }
    [[nodiscard]] NativeHuddleParticipants *participants() { return &m_participants; }
    [[nodiscard]] QStringList liveRooms() const { return m_liveRooms; }
    [[nodiscard]] Q_INVOKABLE bool isLive(const QString &roomID) const { return m_liveRooms.contains(roomID); }
    [[nodiscard]] NativeHuddle &huddle() { return m_huddle; }

    // Starts the room's huddle, or joins the one running there; a huddle in
    // another room is left first.
    Q_INVOKABLE void join(const QString &roomID);
    Q_INVOKABLE void leave();
    Q_INVOKABLE void toggleMute();
    Q_INVOKABLE void toggleCamera();
    // Shares the screen or stops sharing; the screens ask the person first.
    Q_INVOKABLE void toggleScreen();
    // Asks which rooms have a live huddle, for the room list and header.
    Q_INVOKABLE void refreshVisible();
    // Leaves any huddle and forgets the live rooms; for sign-out.
    void clear();

Q_SIGNALS:
    void changed();
    void liveRoomsChanged();

private:
    void follow();
    void followVisible();

    TarnAPI &m_api;
    NativeHuddle m_huddle;
    NativeHuddleParticipants m_participants;
    QStringList m_liveRooms;
    // Whether this person's own huddle was live when last followed.
    bool m_ownLive = false;
};
