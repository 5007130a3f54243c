#pragma once

#include "chat/huddle/NativeHuddleTrack.h"

#include <QPointer>
#include <QQuickPaintedItem>

// A video tile: the latest frame of one participant's camera or screen,
// scaled to fit and centred, redrawn as frames arrive.
class NativeHuddleVideo : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(NativeHuddleTrack *track READ track WRITE setTrack NOTIFY trackChanged)
    // Whether a frame has arrived, so the tile can show a placeholder until then.
    Q_PROPERTY(bool showing READ showing NOTIFY showingChanged)

public:
    explicit NativeHuddleVideo(QQuickItem *parent = nullptr);

    [[nodiscard]] NativeHuddleTrack *track() const { return m_track; }
    void setTrack(NativeHuddleTrack *track);
    [[nodiscard]] bool showing() const { return m_showing; }

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void trackChanged();
    void showingChanged();

private:
    void frameArrived();

    QPointer<NativeHuddleTrack> m_track;
    QMetaObject::Connection m_following;
    bool m_showing = false;
};
