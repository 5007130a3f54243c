#include "chat/huddle/NativeHuddleTrack.h"

#include <QMetaObject>

#include <gst/app/gstappsink.h>
#include <gst/video/video.h>

namespace {

using SlotRef = std::shared_ptr<NativeHuddleTrack::Slot>;

GstFlowReturn onFrame(GstAppSink *sink, gpointer data)
{
    GstSample *sample = gst_app_sink_pull_sample(sink);
    if (!sample)
        return GST_FLOW_EOS;
    GstVideoInfo info;
    GstMapInfo map;
    GstBuffer *buffer = gst_sample_get_buffer(sample);
    if (gst_video_info_from_caps(&info, gst_sample_get_caps(sample)) && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        const QImage frame(map.data, GST_VIDEO_INFO_WIDTH(&info), GST_VIDEO_INFO_HEIGHT(&info),
            GST_VIDEO_INFO_PLANE_STRIDE(&info, 0), QImage::Format_RGB32);
        (*static_cast<SlotRef *>(data))->offer(frame.copy());
        gst_buffer_unmap(buffer, &map);
    }
    gst_sample_unref(sample);
    return GST_FLOW_OK;
}

void releaseSlot(gpointer data)
{
    delete static_cast<SlotRef *>(data);
}

} // namespace

void NativeHuddleTrack::follow(GstElement *appsink, const std::shared_ptr<Slot> &slot)
{
    GstAppSinkCallbacks callbacks {};
    callbacks.new_sample = onFrame;
    gst_app_sink_set_callbacks(GST_APP_SINK(appsink), &callbacks, new SlotRef(slot), releaseSlot);
}

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
