#include "chat/huddle/NativeHuddleTrack.h"

#include <QMetaObject>

void NativeHuddleTrack::Slot::offer(QImage frame)
{
    const std::lock_guard<std::mutex> guard(lock);
    image = std::move(frame);
    ++frames;
    // A frame already announced is replaced, not queued: a slow screen
    // draws the newest frame, never a backlog.
    if (posted || !target)
        return;
    posted = true;
    NativeHuddleTrack *to = target;
    QMetaObject::invokeMethod(
        to,
        [to] {
            {
                const std::lock_guard<std::mutex> posting(to->m_slot->lock);
                to->m_slot->posted = false;
            }
            Q_EMIT to->frameChanged();
        },
        Qt::QueuedConnection);
}

NativeHuddleTrack::NativeHuddleTrack(QObject *parent)
    : QObject(parent)
    , m_slot(std::make_shared<Slot>())
{
    m_slot->target = this;
}

NativeHuddleTrack::~NativeHuddleTrack()
{
    const std::lock_guard<std::mutex> guard(m_slot->lock);
    m_slot->target = nullptr;
}

QImage NativeHuddleTrack::image() const
{
    const std::lock_guard<std::mutex> guard(m_slot->lock);
    return m_slot->image;
}

QSize NativeHuddleTrack::frameSize() const
{
    return image().size();
}

qint64 NativeHuddleTrack::frames() const
{
    const std::lock_guard<std::mutex> guard(m_slot->lock);
    return m_slot->frames;
}
