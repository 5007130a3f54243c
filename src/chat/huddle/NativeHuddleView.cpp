#include "chat/huddle/NativeHuddleView.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

NativeHuddleView::NativeHuddleView(TarnAPI &api, NativeHuddleMedia media, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_huddle(media)
{
    connect(&m_huddle, &NativeHuddle::changed, this, &NativeHuddleView::follow);
    connect(&m_huddle, &NativeHuddle::visibleChanged, this, &NativeHuddleView::followVisible);
}

QString NativeHuddleView::roomName() const
{
    return m_huddle.state().value_or(TarnHuddleState()).room_name.value_or(QString());
}

QString NativeHuddleView::selfID() const
{
    return m_api.session() ? m_api.session()->id : QString();
}

void NativeHuddleView::join(const QString &roomID)
{
    if (roomID.isEmpty() || (m_huddle.running() && m_huddle.roomID() == roomID))
        return;
    // The task runs on by itself; NativeHuddle guards its own state.
    (void)m_huddle.join(roomID, m_api);
}

void NativeHuddleView::leave()
{
    (void)m_huddle.leave();
}

void NativeHuddleView::toggleMute()
{
    (void)m_huddle.toggleMute();
}

void NativeHuddleView::toggleCamera()
{
    (void)m_huddle.toggleCamera();
}

void NativeHuddleView::toggleScreen()
{
    (void)m_huddle.toggleScreen();
}

void NativeHuddleView::refreshVisible()
{
    (void)m_huddle.refreshVisible(m_api);
}

void NativeHuddleView::clear()
{
    if (m_huddle.running())
        leave();
    if (!m_liveRooms.isEmpty()) {
        m_liveRooms.clear();
        Q_EMIT liveRoomsChanged();
    }
}

void NativeHuddleView::follow()
{
    // A huddle that ended lists nobody, whatever its last state held.
    const std::optional<TarnHuddleState> &state = m_huddle.state();
    m_participants.setRows(m_huddle.running() && state ? state->participants.value_or(QList<TarnHuddleParticipant>())
                                                       : QList<TarnHuddleParticipant>());
    // The room list marks live huddles: this person's own one counts as soon
    // as it goes live or ends, not at the list's next reading.
    const bool ownLive = m_huddle.running() && m_huddle.status() == "Live"_L1;
    if (ownLive != m_ownLive) {
        m_ownLive = ownLive;
        refreshVisible();
    }
    Q_EMIT changed();
}

void NativeHuddleView::followVisible()
{
    QStringList live;
    for (const TarnHuddleState &huddle : m_huddle.visible()) {
        if (huddle.active && huddle.room_id)
            live.append(*huddle.room_id);
    }
    if (live != m_liveRooms) {
        m_liveRooms = live;
        Q_EMIT liveRoomsChanged();
    }
}
