#pragma once

#include "chat/huddle/HuddleCommand.h"
#include "chat/huddle/TarnHuddleIceServer.h"
#include "chat/huddle/TarnHuddleJoined.h"
#include "chat/huddle/TarnHuddlePolled.h"
#include "chat/huddle/TarnHuddleState.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

// The rules of a running huddle as plain code, without media or network:
// it is told what the service answered and what the peer connections did,
// and answers with the commands to carry out, while it keeps the status and
// notice texts the screens show. NativeHuddle does the asking and carrying
// out; tests drive this directly.
//
// Of any two participants exactly one offers: the one whose user id sorts
// first in plain string order (equal ids never offer). Signals are handled in
// `seq` order and only above `after`. Remote candidates that arrive before
// their remote description wait in `pending` and are applied after it, in
// arrival order; local ones wait until this side's description was sent and
// then go out in batches.
//
// A connection has one offering side, which makes every offer on it, first
// and again: so two offers never cross on a running connection, which
// matters because webrtcbin cannot roll a local offer back. The offering
// side offers again when it adds a track, and when the other side's marks
// show a camera or screen the connection has no room for yet: it makes room
// (a receive-only transceiver the other side's track fills in its answer)
// and offers. An offer on the same connection keeps its ICE user fragment;
// a fresh one, from a side that saw the connection fail and opened a new
// one, brings a new fragment. Whoever sees a connection fail reopens it and
// offers, so an answering side never waits for an offer that is not coming;
// when both reopen at once, the side whose id sorts first keeps its offer
// and the other answers it.
class HuddleCall {
public:
    struct Peer {
        QString id;
        QString conn;
        bool initiator = false;
        bool offering = false; // an offer is out, its answer not yet applied
        bool remoteSet = false;
        bool descriptionSent = false;
        // An offer is due once the one out is answered.
        bool renegotiate = false;
        // The ICE user fragment of the remote description in use.
        QString remoteUfrag {};
        // The remote tracks this side, as the offering one, made room for.
        QList<HuddleCommand::Track> receiving {};
        QList<TarnHuddleCandidate> pending {};
        QList<TarnHuddleCandidate> localCandidates {};
    };

    [[nodiscard]] static bool offers(const QString &me, const QString &other) { return me < other; }

    // Joining as `me`: a fresh generation, so any poll loop of an earlier join ends.
    [[nodiscard]] quint64 begin(const QString &roomID, const QString &me);
    [[nodiscard]] QList<HuddleCommand> joined(const TarnHuddleJoined &joined);
    void joinFailed(const QString &error);
    // A poll's answer: signals, then the state. `joined` false ends the huddle.
    [[nodiscard]] QList<HuddleCommand> polled(const TarnHuddlePolled &polled);
    void pollFailed();
    // Leaving (or being ended): every peer closed and the state cleared.
    [[nodiscard]] QList<HuddleCommand> leave();

    [[nodiscard]] QList<HuddleCommand> apply(const TarnHuddleState &state);
    [[nodiscard]] QList<HuddleCommand> handle(QList<TarnHuddleSignal> signalList);

    // What the media reports.
    [[nodiscard]] QList<HuddleCommand> descriptionCreated(const QString &peer, const TarnHuddleDescription &local);
    // Queued; true when the caller should schedule flushLocalCandidates.
    [[nodiscard]] bool localCandidate(const QString &peer, const TarnHuddleCandidate &candidate);
    [[nodiscard]] QList<HuddleCommand> flushLocalCandidates(const QString &peer);
    // A local track was added to the peer's connection.
    [[nodiscard]] QList<HuddleCommand> trackAdded(const QString &peer);
    void peerReconnecting();
    // A failed connection is closed and opened again.
    [[nodiscard]] QList<HuddleCommand> peerFailed(const QString &peer);
    void signalFailed(const QString &peer);
    void markFailed();
    void microphoneMissing();
    // A peer's media could not start; the huddle runs on without it.
    void mediaFailed(const QString &error);

    [[nodiscard]] bool isCurrent(quint64 generation) const { return generation == m_generation && m_running; }
    [[nodiscard]] bool isRunning() const { return m_running; }
    [[nodiscard]] quint64 generation() const { return m_generation; }
    [[nodiscard]] const QString &me() const { return m_me; }
    [[nodiscard]] const std::optional<QString> &roomID() const { return m_roomID; }
    [[nodiscard]] const QString &sid() const { return m_sid; }
    [[nodiscard]] const QList<TarnHuddleIceServer> &iceServers() const { return m_iceServers; }
    [[nodiscard]] qint64 after() const { return m_after; }
    [[nodiscard]] qint64 version() const { return m_version; }
    [[nodiscard]] const std::optional<TarnHuddleState> &state() const { return m_state; }
    [[nodiscard]] const Peer *peer(const QString &id) const;
    [[nodiscard]] QString nameOf(const QString &id) const;

    // "Connecting", "Live", "Reconnecting", or empty when no huddle runs.
    [[nodiscard]] const QString &status() const { return m_status; }
    [[nodiscard]] const QString &notice() const { return m_notice; }
    [[nodiscard]] const std::optional<QString> &endedReason() const { return m_endedReason; }
    void clearNotice() { m_notice.clear(); }
    // A notice about the local media, which the huddle runs on without.
    void note(const QString &text) { m_notice = text; }

    // The wait before retrying a poll or a signal after `failures` failures
    // in a row: 250 ms, then doubling up to 2 s. The first retry is quick
    // because most failures are one dropped connection; the ceiling still
    // finds a restarted service within two seconds of its return.
    [[nodiscard]] static int retryMs(int failures);
    // The ICE user fragment of an SDP text, empty when it has none.
    [[nodiscard]] static QString iceUfrag(const QString &sdp);
    // How long local candidates gather before a batch goes out.
    static constexpr int candidateBatchMs = 20;

private:
    [[nodiscard]] QList<HuddleCommand> open(const QString &id, const QString &conn, bool initiator);
    [[nodiscard]] QList<HuddleCommand> close(const QString &id);
    [[nodiscard]] QList<HuddleCommand> setRemote(Peer &peer, const TarnHuddleDescription &description);
    [[nodiscard]] QList<HuddleCommand> offer(Peer &peer);
    [[nodiscard]] QList<HuddleCommand> offerFresh(const TarnHuddleSignal &signal);
    // Room for the participant's marked tracks this side has none for yet.
    [[nodiscard]] QList<HuddleCommand> receiveMarked(Peer &peer);
    void end();

    QString m_me;
    quint64 m_generation = 0;
    bool m_running = false;
    std::optional<QString> m_roomID;
    QString m_sid;
    QList<TarnHuddleIceServer> m_iceServers;
    qint64 m_after = 0;
    qint64 m_version = 0;
    std::optional<TarnHuddleState> m_state;
    QHash<QString, Peer> m_peers;
    QString m_status;
    QString m_notice;
    std::optional<QString> m_endedReason;
};
