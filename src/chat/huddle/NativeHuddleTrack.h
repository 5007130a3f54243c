#pragma once

#include <QImage>
#include <QObject>
#include <QSize>

#include <gst/gst.h>

#include <memory>
#include <mutex>

// One video track as the screens see it: the latest frame decoded (or
// captured) so far. GStreamer's streaming threads hand frames in through the
// Slot, which keeps only the newest and posts one update at a time to this
// object's thread; nothing here is touched from another thread.
class NativeHuddleTrack : public QObject {
    Q_OBJECT
    Q_PROPERTY(QSize frameSize READ frameSize NOTIFY frameChanged)

public:
    struct Slot {
        std::mutex lock;
        NativeHuddleTrack *target = nullptr;
        QImage image;
        qint64 frames = 0;
        bool posted = false;

        // From any thread: keeps `image` as the newest frame.
        void offer(QImage frame);
    };

    // Frames arriving at `appsink` (BGRx) become the newest frame of `slot`.
    static void follow(GstElement *appsink, const std::shared_ptr<Slot> &slot);

    explicit NativeHuddleTrack(QObject *parent = nullptr);
    ~NativeHuddleTrack() override;

    [[nodiscard]] const std::shared_ptr<Slot> &slot() const { return m_slot; }
    [[nodiscard]] QImage image() const;
    [[nodiscard]] QSize frameSize() const;
    // Frames delivered so far.
    [[nodiscard]] qint64 frames() const;

Q_SIGNALS:
    void frameChanged();

private:
    std::shared_ptr<Slot> m_slot;
};
