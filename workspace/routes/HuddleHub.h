#pragma once

#include "workspace/WorkspaceReply.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class WorkspaceResponder;

// The live huddles of the workspace, one per room. Who is in them, their
// marks and the counters are also written to the database, so a restarted
// service carries on the huddles it had (the media flows between the clients
// meanwhile) and their polls resume where they were; signals not yet polled
// and the ringing live in memory only. Each
// joined client has a session id (`sid`, private to it) and a connection id
// (`conn`, what others address signals to). Signals carry a per-huddle `seq`;
// every change of who is in it, who is ringing or of anyone's marks raises the
// huddle's `version`. A poll is held until a signal above its `after` or a
// version above its `version` exists; a client that has not polled for
// `dropAfterMs` (and has no poll held) is taken out.
class HuddleHub : public QObject {
public:
    struct Settings {
        // Each entry {"urls": [...]}; none by default: on loopback host
        // candidates always meet.
        QJsonArray iceServers;
        int dropAfterMs = 45'000;
        // The database connection the huddles are kept in.
        QString connection;
    };
    // The room's name when the person may see the room; nothing otherwise.
    using RoomFor = std::function<std::optional<QString>(const QString &person, const QString &room)>;
    using NameOf = std::function<QString(const QString &person)>;

    HuddleHub(Settings settings, RoomFor roomFor, NameOf nameOf, QObject *parent = nullptr);
    ~HuddleHub() override;

    [[nodiscard]] WorkspaceReply join(const QString &me, const QString &room, const QStringList &invite);
    [[nodiscard]] WorkspaceReply leave(const QString &me, const QString &room, const QString &sid);
    // Any of "muted", "video", "screen" present as booleans in `marks`.
    [[nodiscard]] WorkspaceReply mark(
        const QString &me, const QString &room, const QString &sid, const QJsonObject &marks);
    [[nodiscard]] WorkspaceReply signal(const QString &me, const QString &room, const QString &sid,
        const QString &toConn, const QString &type, const QJsonObject &data);
    void poll(const QString &me, const QString &room, const QString &sid, qint64 after, qint64 version, int waitMs,
        WorkspaceResponder &&responder);
    [[nodiscard]] QJsonArray visible(const QString &me) const;

    // The longest a poll is held, whatever it asks: well inside the client's answer timeout.
    static constexpr int longestWaitMs = 25'000;

private:
    struct Member {
        QString person;
        QString sid;
        QString conn;
        bool muted = false;
        bool video = false;
        bool screen = false;
        qint64 seenMs = 0;
    };
    struct Signal {
        qint64 seq = 0;
        QString from;
        QString fromConn;
        QString toConn;
        QString type;
        QJsonObject data;
    };
    struct Huddle {
        QString id;
        QString startedBy;
        qint64 version = 1;
        qint64 seq = 0;
        QList<Member> members;
        QSet<QString> ringing;
        QList<Signal> signals_;
    };
    struct Waiter {
        QString me;
        QString room;
        QString sid;
        qint64 after = 0;
        qint64 version = 0;
        std::shared_ptr<WorkspaceResponder> responder;
    };

    [[nodiscard]] Member *member(const QString &room, const QString &sid);
    [[nodiscard]] QJsonObject stateFor(const QString &me, const QString &room) const;
    [[nodiscard]] bool hasNews(const Waiter &waiter) const;
    [[nodiscard]] WorkspaceReply pollAnswer(const Waiter &waiter);
    void answer(quint64 waiterId);
    // Answers the held polls of the room that have something new.
    void wake(const QString &room);
    void removeMember(const QString &room, const QString &sid);
    void dropSilent();
    // Writes the room's huddle (or its end) to the database.
    void save(const QString &room);
    // The huddles a previous run left, each member given a fresh grace period.
    void load();

    Settings m_settings;
    RoomFor m_roomFor;
    NameOf m_nameOf;
    QHash<QString, Huddle> m_huddles;
    QHash<quint64, Waiter> m_waiters;
    quint64 m_nextWaiter = 1;
    QTimer m_sweep;
};
