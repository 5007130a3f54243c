#include "chat/huddle/HuddleCall.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString connecting = u"Connecting"_s;
const QString live = u"Live"_s;
const QString reconnecting = u"Reconnecting"_s;

HuddleCommand command(HuddleCommand::Kind kind, const QString &peer)
{
    return { .kind = kind, .peer = peer };
}

} // namespace

quint64 HuddleCall::begin(const QString &roomID, const QString &me)
{
    m_me = me;
    m_peers.clear();
    m_state.reset();
    m_sid.clear();
    m_iceServers.clear();
    m_after = 0;
    m_version = 0;
    m_roomID = roomID;
    m_running = true;
    m_status = connecting;
    m_notice.clear();
    m_endedReason.reset();
    return ++m_generation;
}

QList<HuddleCommand> HuddleCall::joined(const TarnHuddleJoined &joined)
{
    m_sid = joined.sid;
    m_iceServers = joined.ice_servers;
    m_after = 0;
    m_version = joined.state.version.value_or(0);
    m_status = live;
    return apply(joined.state);
}

void HuddleCall::joinFailed(const QString &error)
{
    end();
    m_notice = u"Could not start the call: "_s + error;
}

QList<HuddleCommand> HuddleCall::polled(const TarnHuddlePolled &polled)
{
    if (!polled.joined) {
        QList<HuddleCommand> out = leave();
        m_endedReason = polled.state.active ? u"You are no longer in this huddle."_s : u"The huddle has ended."_s;
        return out;
    }
    m_status = live;
    QList<HuddleCommand> out = handle(polled.signals_);
    out += apply(polled.state);
    m_version = std::max(m_version, polled.state.version.value_or(0));
    return out;
}

void HuddleCall::pollFailed()
{
    m_status = reconnecting;
}

QList<HuddleCommand> HuddleCall::leave()
{
    QList<HuddleCommand> out;
    const QList<QString> ids = m_peers.keys();
    for (const QString &id : ids)
        out += close(id);
    end();
    ++m_generation;
    return out;
}

void HuddleCall::end()
{
    m_running = false;
    m_peers.clear();
    m_state.reset();
    m_sid.clear();
    m_roomID.reset();
    m_status.clear();
}

QList<HuddleCommand> HuddleCall::apply(const TarnHuddleState &state)
{
    m_state = state;
    const QList<TarnHuddleParticipant> participants = state.participants.value_or(QList<TarnHuddleParticipant>());
    QList<HuddleCommand> out;
    const QList<QString> ids = m_peers.keys();
    for (const QString &id : ids) {
        const bool stays = std::any_of(participants.cbegin(), participants.cend(),
            [&](const TarnHuddleParticipant &p) { return p.user_id == id && p.conn == m_peers.value(id).conn; });
        if (!stays)
            out += close(id);
    }
    for (const TarnHuddleParticipant &p : participants) {
        if (p.user_id != m_me && !m_peers.contains(p.user_id))
            out += open(p.user_id, p.conn, offers(m_me, p.user_id));
    }
    for (Peer &peer : m_peers) {
        const QList<HuddleCommand> room = peer.initiator ? receiveMarked(peer) : QList<HuddleCommand>();
        if (!room.isEmpty())
            out += room + offer(peer);
    }
    return out;
}

QList<HuddleCommand> HuddleCall::handle(QList<TarnHuddleSignal> signalList)
{
    std::stable_sort(signalList.begin(), signalList.end(),
        [](const TarnHuddleSignal &a, const TarnHuddleSignal &b) { return a.seq < b.seq; });
    QList<HuddleCommand> out;
    for (const TarnHuddleSignal &signal : std::as_const(signalList)) {
        if (signal.seq <= m_after)
            continue;
        m_after = signal.seq;
        const auto found = m_peers.find(signal.from);
        const bool sameConn = found != m_peers.end() && found->conn == signal.from_conn;
        if (signal.type == "offer"_L1 && signal.data.description) {
            const bool again = sameConn && !found->initiator
                && (!found->remoteSet || found->remoteUfrag == iceUfrag(signal.data.description->sdp));
            // Both sides reopened at once: the first in id order keeps its offer.
            const bool crossed
                = sameConn && found->initiator && found->offering && !found->remoteSet && offers(m_me, signal.from);
            if (again) {
                out += setRemote(*found, *signal.data.description);
                out.append(command(HuddleCommand::Kind::MakeAnswer, found->id));
            } else if (!crossed) {
                out += offerFresh(signal);
            }
        } else if (signal.type == "answer"_L1 && signal.data.description && sameConn && found->offering) {
            found->offering = false;
            out += setRemote(*found, *signal.data.description);
            if (found->renegotiate) {
                found->renegotiate = false;
                out += offer(*found);
            }
        } else if (signal.type == "ice"_L1 && sameConn) {
            for (const TarnHuddleCandidate &candidate : signal.data.candidates.value_or(QList<TarnHuddleCandidate>())) {
                if (found->remoteSet)
                    out.append(
                        { .kind = HuddleCommand::Kind::AddCandidate, .peer = found->id, .candidate = candidate });
                else
                    found->pending.append(candidate);
            }
        }
    }
    return out;
}

QList<HuddleCommand> HuddleCall::setRemote(Peer &peer, const TarnHuddleDescription &description)
{
    QList<HuddleCommand> out {
        { .kind = HuddleCommand::Kind::SetRemote, .peer = peer.id, .description = description }
    };
    peer.remoteSet = true;
    peer.remoteUfrag = iceUfrag(description.sdp);
    for (const TarnHuddleCandidate &candidate : std::as_const(peer.pending))
        out.append({ .kind = HuddleCommand::Kind::AddCandidate, .peer = peer.id, .candidate = candidate });
    peer.pending.clear();
    return out;
}

QList<HuddleCommand> HuddleCall::open(const QString &id, const QString &conn, bool initiator)
{
    Peer &peer = *m_peers.insert(id, Peer { .id = id, .conn = conn, .initiator = initiator });
    QList<HuddleCommand> out {
        { .kind = HuddleCommand::Kind::OpenPeer, .peer = id, .conn = conn, .initiator = initiator }
    };
    if (initiator)
        out += receiveMarked(peer) + offer(peer);
    return out;
}

QList<HuddleCommand> HuddleCall::offerFresh(const TarnHuddleSignal &signal)
{
    QList<HuddleCommand> out;
    if (m_peers.contains(signal.from))
        out += close(signal.from);
    out += open(signal.from, signal.from_conn, false);
    Peer &peer = m_peers[signal.from];
    out += setRemote(peer, *signal.data.description);
    out.append(command(HuddleCommand::Kind::MakeAnswer, peer.id));
    return out;
}

QList<HuddleCommand> HuddleCall::offer(Peer &peer)
{
    if (!peer.initiator)
        return {};
    if (peer.offering) {
        peer.renegotiate = true;
        return {};
    }
    peer.offering = true;
    return { command(HuddleCommand::Kind::MakeOffer, peer.id) };
}

QList<HuddleCommand> HuddleCall::receiveMarked(Peer &peer)
{
    using Track = HuddleCommand::Track;
    QList<HuddleCommand> out;
    if (!m_state)
        return out;
    for (const TarnHuddleParticipant &p : m_state->participants.value_or(QList<TarnHuddleParticipant>())) {
        if (p.conn != peer.conn)
            continue;
        for (const auto &[marked, track] :
            { std::pair { p.video, Track::Camera }, std::pair { p.screen, Track::Screen } }) {
            if (marked && !peer.receiving.contains(track)) {
                peer.receiving.append(track);
                out.append({ .kind = HuddleCommand::Kind::Receive, .peer = peer.id, .track = track });
            }
        }
    }
    return out;
}

QList<HuddleCommand> HuddleCall::trackAdded(const QString &peerID)
{
    const auto found = m_peers.find(peerID);
    return found == m_peers.end() ? QList<HuddleCommand>() : offer(*found);
}

QList<HuddleCommand> HuddleCall::close(const QString &id)
{
    m_peers.remove(id);
    return { command(HuddleCommand::Kind::ClosePeer, id) };
}

QList<HuddleCommand> HuddleCall::descriptionCreated(const QString &peerID, const TarnHuddleDescription &local)
{
    const auto found = m_peers.find(peerID);
    if (found == m_peers.end())
        return {};
    found->descriptionSent = true;
    QList<HuddleCommand> out { { .kind = HuddleCommand::Kind::Send,
        .peer = peerID,
        .conn = found->conn,
        .type = local.type,
        .data = { .description = local } } };
    return out + flushLocalCandidates(peerID);
}

bool HuddleCall::localCandidate(const QString &peerID, const TarnHuddleCandidate &candidate)
{
    const auto found = m_peers.find(peerID);
    if (found == m_peers.end())
        return false;
    found->localCandidates.append(candidate);
    return found->descriptionSent;
}

QList<HuddleCommand> HuddleCall::flushLocalCandidates(const QString &peerID)
{
    const auto found = m_peers.find(peerID);
    if (found == m_peers.end() || !found->descriptionSent || found->localCandidates.isEmpty())
        return {};
    const HuddleCommand batch { .kind = HuddleCommand::Kind::Send,
        .peer = peerID,
        .conn = found->conn,
        .type = u"ice"_s,
        .data = { .candidates = found->localCandidates } };
    found->localCandidates.clear();
    return { batch };
}

void HuddleCall::peerReconnecting()
{
    m_notice = u"A participant is reconnecting. Audio may pause briefly."_s;
}

QList<HuddleCommand> HuddleCall::peerFailed(const QString &peerID)
{
    const auto found = m_peers.constFind(peerID);
    if (found == m_peers.constEnd())
        return {};
    const Peer failed = *found;
    m_notice = u"Audio connection to "_s + nameOf(peerID) + u" failed; retrying."_s;
    // The other side may not have seen it fail: this side offers anew.
    QList<HuddleCommand> out = close(peerID);
    return out + open(failed.id, failed.conn, true);
}

void HuddleCall::signalFailed(const QString &peerID)
{
    m_notice = u"Call signaling to "_s + nameOf(peerID) + u" failed. Reconnecting."_s;
}

void HuddleCall::markFailed()
{
    m_notice = u"Mute status could not sync. Reconnecting may be needed."_s;
}

void HuddleCall::microphoneMissing()
{
    m_notice = u"No microphone is available, so you joined muted."_s;
}

void HuddleCall::mediaFailed(const QString &error)
{
    m_notice = u"Could not start the call: "_s + error;
}

const HuddleCall::Peer *HuddleCall::peer(const QString &id) const
{
    const auto found = m_peers.constFind(id);
    return found == m_peers.constEnd() ? nullptr : &*found;
}

QString HuddleCall::nameOf(const QString &id) const
{
    if (m_state) {
        for (const TarnHuddleParticipant &p : m_state->participants.value_or(QList<TarnHuddleParticipant>())) {
            if (p.user_id == id)
                return p.name;
        }
    }
    return id;
}

QString HuddleCall::iceUfrag(const QString &sdp)
{
    static constexpr QLatin1StringView key("a=ice-ufrag:");
    const qsizetype at = sdp.indexOf(key);
    if (at < 0)
        return {};
    const qsizetype start = at + key.size();
    qsizetype end = start;
    while (end < sdp.size() && sdp[end] != u'\r' && sdp[end] != u'\n')
        ++end;
    return sdp.mid(start, end - start);
}

int HuddleCall::retryMs(int failures)
{
    return 250 << std::clamp(failures - 1, 0, 3);
}
