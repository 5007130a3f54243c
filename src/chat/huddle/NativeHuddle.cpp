#include "chat/huddle/NativeHuddle.h"

#include "auth/NativePlatformText.h"
#include "chat/huddle/NativeHuddleTrack.h"
#include "chat/huddle/TarnHuddleCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QCoroTimer>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

using Track = HuddleCommand::Track;

// What the person is told about a local video track.
struct TrackTexts {
    QString missing;
    QString denied;
    QString failed; // followed by the error
    QString unsynced;
    QString stopped; // ended by the system
};

const TrackTexts &textsOf(Track track)
{
    static const TrackTexts camera { u"No camera is available."_s,
        NativePlatformText::get(NativePlatformText::Id::cameraDenied), u"Could not start the camera: "_s,
        u"Video is on, but its status could not sync."_s, u"The camera stopped."_s };
    static const TrackTexts screen { {}, {}, u"Screen sharing could not start: "_s,
        u"Screen sharing is on, but its status could not sync."_s,
        NativePlatformText::get(NativePlatformText::Id::screenStoppedBySystem) };
    return track == Track::Camera ? camera : screen;
}

} // namespace

NativeHuddle::NativeHuddle(NativeHuddleMedia media, QObject *parent)
    : QObject(parent)
    , m_configured(media)
    , m_media(media)
{
    for (const Track track : { Track::Camera, Track::Screen }) {
        connect(&local(track).capture, &NativeHuddleCapture::stopped, this,
            [this, track](const QString &error) { captureStopped(track, error); });
    }
    connect(&m_portal, &NativeScreenCastPortal::closed, this, [this] {
        m_screen.capture.stop();
        captureStopped(Track::Screen, {});
    });
}

NativeHuddle::~NativeHuddle() = default;

QCoro::Task<> NativeHuddle::join(QString roomID, TarnAPI &api, QList<QString> invite)
{
    const QPointer<NativeHuddle> self(this);
    if (m_call.isRunning()) {
        co_await leave();
        if (!self)
            co_return;
    }
    if (!api.session())
        co_return;
    m_api = &api;
    const quint64 generation = m_call.begin(roomID, api.session()->id);
    Q_EMIT changed();
    // Checked before anything is asked of the service, so a missing plugin
    // never leaves a half-joined huddle behind.
    const QString missing = NativeHuddleMedia::missingPlugin();
    if (!missing.isEmpty()) {
        m_call.joinFailed(missing);
        Q_EMIT changed();
        co_return;
    }
    m_media = m_configured;
    m_media.microphone = m_configured.testSources || NativeHuddleMedia::hasMicrophone();
    m_muted = !m_media.microphone;
    TarnHuddleJoined joined;
    try {
        joined = co_await TarnHuddleCalls::joinHuddle(api, roomID, invite);
    } catch (const TarnAPIError &error) {
        if (self && m_call.isCurrent(generation)) {
            m_call.joinFailed(error.text());
            Q_EMIT changed();
        }
        co_return;
    }
    if (!self)
        co_return;
    if (!m_call.isCurrent(generation)) {
        // Left while joining: the service still counts this session in.
        const QString sid = joined.sid;
        co_await TarnHuddleCalls::leaveHuddle(api, roomID, sid);
        co_return;
    }
    run(m_call.joined(joined));
    if (!m_media.microphone)
        m_call.microphoneMissing();
    // Muted for want of a microphone, or by the person while connecting: the
    // others hear of it now that there is a session to report it for.
    if (m_muted)
        reportMuted(generation);
    Q_EMIT changed();
    pollLoop(generation);
}

QCoro::Task<> NativeHuddle::leave()
{
    const std::optional<QString> room = m_call.roomID();
    const QString sid = m_call.sid();
    run(m_call.leave());
    stopCaptures();
    m_outbox.clear();
    m_muted = false;
    Q_EMIT changed();
    const QPointer<TarnAPI> api = m_api;
    if (!room || sid.isEmpty() || !api)
        co_return;
    try {
        const QString roomID = *room;
        co_await TarnHuddleCalls::leaveHuddle(*api, roomID, sid);
    } catch (const TarnAPIError &) {
        // Unheard, the service takes the session out once its polls stop.
    }
}

QCoro::Task<> NativeHuddle::toggleMute()
{
    if (!m_call.isRunning() || !m_api)
        co_return;
    if (!m_media.microphone) {
        m_call.microphoneMissing();
        Q_EMIT changed();
        co_return;
    }
    m_muted = !m_muted;
    for (const auto &[id, peer] : m_peers)
        peer->setMuted(m_muted);
    Q_EMIT changed();
    co_await reportMuted(m_call.generation());
}

QCoro::Task<> NativeHuddle::reportMuted(quint64 generation)
{
    // Still joining: the join reports it once it has a session.
    if (!m_api || m_call.sid().isEmpty())
        co_return;
    const QPointer<NativeHuddle> self(this);
    TarnHuddleMarks marks { .sid = m_call.sid(), .muted = m_muted };
    const bool synced = co_await reportMarks(std::move(marks));
    if (!synced && self && m_call.isCurrent(generation)) {
        m_call.markFailed();
        Q_EMIT changed();
    }
}

QCoro::Task<bool> NativeHuddle::reportMarks(TarnHuddleMarks marks)
{
    if (!m_api)
        co_return false;
    const QString room = m_call.roomID().value_or(QString());
    try {
        co_await TarnHuddleCalls::setHuddleState(*m_api, room, marks);
    } catch (const TarnAPIError &) {
        co_return false;
    }
    co_return true;
}

QCoro::Task<> NativeHuddle::toggleCamera()
{
    return toggle(Track::Camera);
}

QCoro::Task<> NativeHuddle::toggleScreen()
{
    return toggle(Track::Screen);
}

QCoro::Task<> NativeHuddle::toggle(Track track)
{
    Local &mine = local(track);
    if (!m_call.isRunning() || m_call.sid().isEmpty() || mine.changing)
        co_return;
    const QPointer<NativeHuddle> self(this);
    const quint64 generation = m_call.generation();
    const TrackTexts &texts = textsOf(track);
    const bool on = !mine.on;
    if (on) {
        mine.changing = true;
        Q_EMIT changed();
        const QString source = co_await sourceOf(track);
        if (!self || !m_call.isCurrent(generation))
            co_return;
        mine.changing = false;
        QString error;
        if (source.isEmpty() || !mine.capture.start(source, &error)) {
            if (!source.isEmpty())
                m_call.note(texts.failed + error);
            if (track == Track::Screen)
                m_portal.close();
            Q_EMIT changed();
            co_return;
        }
        for (const auto &[id, peer] : m_peers) {
            if (peer->sendVideo(track, mine.capture))
                run(m_call.trackAdded(id));
        }
    } else {
        mine.capture.stop();
        if (track == Track::Screen)
            m_portal.close();
    }
    mine.on = on;
    mine.changing = true;
    Q_EMIT changed();
    TarnHuddleMarks marks { .sid = m_call.sid() };
    (track == Track::Camera ? marks.video : marks.screen) = on;
    const bool synced = co_await reportMarks(std::move(marks));
    if (!self || !m_call.isCurrent(generation))
        co_return;
    mine.changing = false;
    if (!synced && on)
        m_call.note(texts.unsynced);
    Q_EMIT changed();
}

QCoro::Task<QString> NativeHuddle::sourceOf(Track track)
{
    const TrackTexts &texts = textsOf(track);
    if (track == Track::Camera) {
        const NativeHuddleMedia::Camera camera
            = m_media.testSources ? NativeHuddleMedia::Camera::Present : NativeHuddleMedia::findCamera();
        if (camera == NativeHuddleMedia::Camera::Present)
            co_return m_media.cameraSource();
        m_call.note(camera == NativeHuddleMedia::Camera::Missing ? texts.missing : texts.denied);
        co_return QString();
    }
    if (!m_media.screenThroughPortal()) {
        QString error;
        QString source = m_media.screenSource(&error);
        if (source.isEmpty())
            m_call.note(texts.failed + error);
        co_return source;
    }
    const QPointer<NativeHuddle> self(this);
    const quint64 generation = m_call.generation();
    const NativeScreenCastPortal::Cast cast = co_await m_portal.start();
    if (!self)
        co_return QString();
    if (!m_call.isCurrent(generation)) {
        m_portal.close();
        co_return QString();
    }
    switch (cast.outcome) {
    case NativeScreenCastPortal::Outcome::Started:
        co_return NativeHuddleMedia::pipeWireSource(cast.fd, cast.node);
    case NativeScreenCastPortal::Outcome::Refused:
        m_call.note(texts.failed + u"no screen was chosen"_s);
        break;
    case NativeScreenCastPortal::Outcome::Failed:
        m_call.note(texts.failed + cast.error);
        break;
    }
    co_return QString();
}

void NativeHuddle::captureStopped(Track track, const QString &error)
{
    Local &mine = local(track);
    if (track == Track::Screen)
        m_portal.close();
    if (!mine.on || !m_call.isRunning())
        return;
    mine.on = false;
    m_call.note(track == Track::Camera && !error.isEmpty() ? textsOf(track).failed + error : textsOf(track).stopped);
    Q_EMIT changed();
    TarnHuddleMarks marks { .sid = m_call.sid() };
    (track == Track::Camera ? marks.video : marks.screen) = false;
    (void)reportMarks(std::move(marks));
}

void NativeHuddle::stopCaptures()
{
    m_portal.close();
    for (Local *mine : { &m_camera, &m_screen }) {
        mine->capture.stop();
        mine->on = false;
        mine->changing = false;
    }
}

NativeHuddleTrack *NativeHuddle::videoTrack(const QString &conn, bool screen) const
{
    for (const auto &[id, peer] : m_peers) {
        if (peer->conn() == conn)
            return peer->video(screen ? Track::Screen : Track::Camera);
    }
    return nullptr;
}

QCoro::Task<> NativeHuddle::refreshVisible(TarnAPI &api)
{
    const QPointer<NativeHuddle> self(this);
    try {
        const TarnHuddleList list = co_await TarnHuddleCalls::huddles(api);
        if (self && list.huddles != m_visible) {
            m_visible = list.huddles;
            Q_EMIT visibleChanged();
        }
    } catch (const TarnAPIError &) {
        // The room list keeps what it showed; the next refresh tries again.
    }
}

qint64 NativeHuddle::decodedAudioFrom(const QString &userID) const
{
    const auto found = m_peers.find(userID);
    return found == m_peers.end() ? 0 : found->second->decodedAudioBuffers();
}

QCoro::Task<> NativeHuddle::pause(int ms)
{
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setSingleShot(true);
    timer.start(ms);
    co_await qCoro(timer).waitForTimeout();
}

QCoro::Task<> NativeHuddle::pollLoop(quint64 generation)
{
    const QPointer<NativeHuddle> self(this);
    int failures = 0;
    while (self && m_call.isCurrent(generation) && m_api) {
        const QString room = m_call.roomID().value_or(QString());
        // After a failure the poll asks for an answer at once, so "Live"
        // returns as soon as the service does, not when a held poll ends.
        const TarnHuddlePoll poll {
            .sid = m_call.sid(), .after = m_call.after(), .version = m_call.version(), .wait = failures > 0 ? 0 : 15
        };
        std::optional<TarnHuddlePolled> polled;
        try {
            polled = co_await TarnHuddleCalls::poll(*m_api, room, poll);
        } catch (const TarnAPIError &) {
        }
        if (!self || !m_call.isCurrent(generation))
            co_return;
        if (!polled) {
            m_call.pollFailed();
            Q_EMIT changed();
            co_await pause(HuddleCall::retryMs(++failures));
            continue;
        }
        failures = 0;
        run(m_call.polled(*polled));
        Q_EMIT changed();
    }
}

QCoro::Task<> NativeHuddle::sendLoop(quint64 generation)
{
    const QPointer<NativeHuddle> self(this);
    m_sending = true;
    int failures = 0;
    while (self && m_call.isCurrent(generation) && !m_outbox.isEmpty() && m_api) {
        const HuddleCommand next = m_outbox.first();
        const QString room = m_call.roomID().value_or(QString());
        const TarnHuddleSignalSend signal { m_call.sid(), next.conn, next.type, next.data };
        bool sent = false;
        try {
            co_await TarnHuddleCalls::signal(*m_api, room, signal);
            sent = true;
        } catch (const TarnAPIError &) {
        }
        if (!self || !m_call.isCurrent(generation))
            co_return;
        const HuddleCall::Peer *peer = m_call.peer(next.peer);
        // A signal for a connection that has since closed is not resent.
        if (sent || !peer || peer->conn != next.conn) {
            failures = 0;
            m_outbox.removeFirst();
            continue;
        }
        m_call.signalFailed(next.peer);
        Q_EMIT changed();
        co_await pause(HuddleCall::retryMs(++failures));
    }
    if (self)
        m_sending = false;
}

void NativeHuddle::run(const QList<HuddleCommand> &commands)
{
    using Kind = HuddleCommand::Kind;
    for (const HuddleCommand &command : commands) {
        if (command.kind == Kind::Send) {
            m_outbox.append(command);
            continue;
        }
        if (command.kind == Kind::OpenPeer) {
            openPeer(command);
            continue;
        }
        const auto found = m_peers.find(command.peer);
        if (found == m_peers.end())
            continue;
        NativeHuddlePeer &peer = *found->second;
        switch (command.kind) {
        case Kind::ClosePeer:
            for (const Track track : { Track::Camera, Track::Screen }) {
                if (GstElement *source = peer.videoSource(track))
                    local(track).capture.unfeed(source);
            }
            m_peers.erase(found);
            break;
        case Kind::Receive:
            peer.receive(command.track);
            break;
        case Kind::MakeOffer:
            peer.createOffer();
            break;
        case Kind::MakeAnswer:
            peer.createAnswer();
            break;
        case Kind::SetRemote:
            peer.setRemoteDescription(command.description);
            break;
        case Kind::AddCandidate:
            peer.addCandidate(command.candidate);
            break;
        case Kind::OpenPeer:
        case Kind::Send:
            break;
        }
    }
    if (!m_outbox.isEmpty() && !m_sending)
        sendLoop(m_call.generation());
}

void NativeHuddle::openPeer(const HuddleCommand &command)
{
    TarnLaterPointer<NativeHuddlePeer> peer(
        new NativeHuddlePeer(command.peer, command.conn, m_call.iceServers(), m_media, m_muted, this));
    QString error;
    if (!peer->start(&error)) {
        m_call.mediaFailed(error);
        return;
    }
    NativeHuddlePeer *raw = peer.get();
    const QString id = command.peer;
    // Tracks that are on go in the connection's first offer or answer.
    for (const Track track : { Track::Camera, Track::Screen }) {
        if (local(track).on)
            (void)raw->sendVideo(track, local(track).capture);
    }
    connect(raw, &NativeHuddlePeer::descriptionCreated, this, [this, raw, id](const TarnHuddleDescription &local) {
        if (isCurrent(raw))
            run(m_call.descriptionCreated(id, local));
    });
    connect(raw, &NativeHuddlePeer::localCandidate, this, [this, raw, id](const TarnHuddleCandidate &candidate) {
        if (!isCurrent(raw) || !m_call.localCandidate(id, candidate) || m_batchDue.contains(id))
            return;
        // Candidates come in bursts: one signal carries each burst.
        m_batchDue.insert(id);
        QTimer::singleShot(HuddleCall::candidateBatchMs, this, [this, id] {
            m_batchDue.remove(id);
            run(m_call.flushLocalCandidates(id));
        });
    });
    connect(raw, &NativeHuddlePeer::linkChanged, this, [this, raw, id](NativeHuddlePeer::Link link) {
        if (!isCurrent(raw))
            return;
        if (link == NativeHuddlePeer::Link::Interrupted)
            m_call.peerReconnecting();
        else if (link == NativeHuddlePeer::Link::Failed)
            run(m_call.peerFailed(id));
        Q_EMIT changed();
    });
    connect(raw, &NativeHuddlePeer::remoteAudioStarted, this, [this, raw, id] {
        if (isCurrent(raw))
            Q_EMIT remoteAudioStarted(id);
    });
    m_peers[id] = std::move(peer);
}

bool NativeHuddle::isCurrent(const NativeHuddlePeer *peer) const
{
    const auto found = m_peers.find(peer->id());
    return found != m_peers.end() && found->second.get() == peer;
}
