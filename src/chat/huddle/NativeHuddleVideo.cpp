#include "chat/huddle/NativeHuddleVideo.h"

#include <QPainter>

NativeHuddleVideo::NativeHuddleVideo(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setOpaquePainting(false);
}

void NativeHuddleVideo::setTrack(NativeHuddleTrack *track)
{
    if (track == m_track)
        return;
    disconnect(m_following);
    m_track = track;
    if (track)
        m_following = connect(track, &NativeHuddleTrack::frameChanged, this, &NativeHuddleVideo::frameArrived);
    Q_EMIT trackChanged();
    frameArrived();
}

void NativeHuddleVideo::frameArrived()
{
    const bool showing = m_track && m_track->frames() > 0;
    if (showing != m_showing) {
        m_showing = showing;
        Q_EMIT showingChanged();
    }
    update();
}

void NativeHuddleVideo::paint(QPainter *painter)
{
    if (!m_track)
        return;
    const QImage frame = m_track->image();
    if (frame.isNull())
        return;
    const QSizeF fitted = QSizeF(frame.size()).scaled(size(), Qt::KeepAspectRatio);
    const QRectF target(QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2), fitted);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(target, frame);
}
