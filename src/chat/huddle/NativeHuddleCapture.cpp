#include "chat/huddle/NativeHuddleCapture.h"

#include <gst/app/gstappsink.h>
#include <gst/app/gstappsrc.h>
#include <gst/video/video.h>

#include <QMetaObject>

#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;

struct NativeHuddleCapture::Shared {
    struct Sink {
        NativeGst::Element appsrc;
        gulong probe = 0;
        bool keyed = false; // a key frame went out to it since it was fed
    };

    std::mutex lock;
    NativeHuddleCapture *target = nullptr;
    bool running = false;
    QString lastError;
    NativeGst::Pad encoderSource;
    std::vector<Sink> sinks;

    void keyFrame()
    {
        NativeGst::Pad pad;
        {
            const std::lock_guard<std::mutex> guard(lock);
            if (encoderSource)
                pad.reset(GST_PAD(gst_object_ref(encoderSource.get())));
        }
        if (pad)
            gst_pad_send_event(pad.get(), gst_video_event_new_upstream_force_key_unit(GST_CLOCK_TIME_NONE, TRUE, 0));
    }
};

namespace {

using Shared = NativeHuddleCapture::Shared;
using SharedRef = std::shared_ptr<Shared>;

Shared &sharedOf(gpointer data)
{
    return **static_cast<SharedRef *>(data);
}

void release(gpointer data)
{
    delete static_cast<SharedRef *>(data);
}

GstFlowReturn onEncoded(GstAppSink *sink, gpointer data)
{
    const GstSample *sample = gst_app_sink_pull_sample(sink);
    if (!sample)
        return GST_FLOW_EOS;
    GstBuffer *buffer = gst_sample_get_buffer(const_cast<GstSample *>(sample));
    const bool key = !GST_BUFFER_FLAG_IS_SET(buffer, GST_BUFFER_FLAG_DELTA_UNIT);
    Shared &shared = sharedOf(data);
    {
        const std::lock_guard<std::mutex> guard(shared.lock);
        for (Shared::Sink &out : shared.sinks) {
            out.keyed = out.keyed || key;
            // Each peer's source stamps its copy with its own pipeline's time.
            if (out.keyed)
                gst_app_src_push_buffer(GST_APP_SRC(out.appsrc.get()), gst_buffer_copy(buffer));
        }
    }
    gst_sample_unref(const_cast<GstSample *>(sample));
    return GST_FLOW_OK;
}

// A receiver lost frames and asks for a key frame: the encoder is elsewhere.
GstPadProbeReturn onUpstream(GstPad *, GstPadProbeInfo *info, gpointer data)
{
    if (gst_video_event_is_force_key_unit(GST_PAD_PROBE_INFO_EVENT(info)))
        sharedOf(data).keyFrame();
    return GST_PAD_PROBE_OK;
}

GstBusSyncReply onMessage(GstBus *, GstMessage *message, gpointer data)
{
    const GstMessageType type = GST_MESSAGE_TYPE(message);
    if (type != GST_MESSAGE_EOS && type != GST_MESSAGE_ERROR)
        return GST_BUS_DROP;
    QString text;
    if (type == GST_MESSAGE_ERROR) {
        GError *error = nullptr;
        gst_message_parse_error(message, &error, nullptr);
        text = QString::fromUtf8(error ? error->message : "the capture failed");
        g_clear_error(&error);
    }
    Shared &shared = sharedOf(data);
    const std::lock_guard<std::mutex> guard(shared.lock);
    if (shared.lastError.isEmpty())
        shared.lastError = text;
    if (shared.running && shared.target) {
        shared.running = false;
        NativeHuddleCapture *target = shared.target;
        QMetaObject::invokeMethod(
            target,
            [target, text] {
                target->stop();
                Q_EMIT target->stopped(text);
            },
            Qt::QueuedConnection);
    }
    return GST_BUS_DROP;
}

} // namespace

NativeHuddleCapture::NativeHuddleCapture(HuddleCommand::Track track, QObject *parent)
    : QObject(parent)
    , m_track(track)
    , m_shared(std::make_shared<Shared>())
{
    m_shared->target = this;
}

NativeHuddleCapture::~NativeHuddleCapture()
{
    {
        const std::lock_guard<std::mutex> guard(m_shared->lock);
        m_shared->target = nullptr;
    }
    stop();
    const std::lock_guard<std::mutex> guard(m_shared->lock);
    for (Shared::Sink &sink : m_shared->sinks)
        gst_pad_remove_probe(NativeGst::Pad(gst_element_get_static_pad(sink.appsrc.get(), "src")).get(), sink.probe);
    m_shared->sinks.clear();
}

NativeHuddleCapture::Format NativeHuddleCapture::formatOf(HuddleCommand::Track track)
{
    return track == HuddleCommand::Track::Camera ? Format { 640, 360, 24, 700 } : Format { 1280, 720, 15, 1500 };
}

bool NativeHuddleCapture::start(const QString &source, QString *error)
{
    stop();
    const Format format = formatOf(m_track);
    // The camera's picture is also shown to the person, in a small tile: at
    // a quarter of the size and half the rate, as converting every frame for
    // it would cost as much as encoding them.
    const QString preview = m_track == HuddleCommand::Track::Camera
        ? u" ! tee name=split ! queue leaky=downstream max-size-buffers=1 ! videorate drop-only=true max-rate=12"
          " ! videoscale ! video/x-raw,width=320,height=180 ! videoconvert ! video/x-raw,format=BGRx"
          " ! appsink name=preview sync=false max-buffers=1 drop=true split. ! queue max-size-buffers=2"_s
        : QString();
    const QString scaled
        = u" ! videoconvert ! videoscale ! videorate"
          " ! video/x-raw,format=I420,width=%1,height=%2,framerate=%3/1,pixel-aspect-ratio=1/1"_s.arg(
              QString::number(format.width), QString::number(format.height), QString::number(format.fps));
    // Realtime VP8: the fastest preset, no frames held back, a key frame
    // every two seconds at most so a lost one heals by itself.
    const QString encoded = u" ! vp8enc name=encoder deadline=1 cpu-used=8 end-usage=cbr target-bitrate=%1"
                            " lag-in-frames=0 keyframe-max-dist=%2 threads=2"
                            " ! appsink name=out sync=false max-buffers=4 drop=true"_s.arg(
                                QString::number(format.kbps * 1000), QString::number(format.fps * 2));
    const QString description = source + scaled + preview + encoded;
    NativeGst::Element own = NativeGst::launch(description, error);
    if (!own)
        return false;
    GstElement *pipeline = own.get();
    const NativeGst::Element encoder(gst_bin_get_by_name(GST_BIN(pipeline), "encoder"));
    const NativeGst::Element out(gst_bin_get_by_name(GST_BIN(pipeline), "out"));
    GstAppSinkCallbacks callbacks {};
    callbacks.new_sample = onEncoded;
    gst_app_sink_set_callbacks(GST_APP_SINK(out.get()), &callbacks, new SharedRef(m_shared), release);
    if (const NativeGst::Element shown(gst_bin_get_by_name(GST_BIN(pipeline), "preview")); shown)
        NativeHuddleTrack::follow(shown.get(), m_preview.slot());
    const NativeGst::Bus bus(gst_element_get_bus(pipeline));
    gst_bus_set_sync_handler(bus.get(), onMessage, new SharedRef(m_shared), release);
    {
        const std::lock_guard<std::mutex> guard(m_shared->lock);
        m_shared->lastError.clear();
        m_shared->encoderSource.reset(gst_element_get_static_pad(encoder.get(), "src"));
    }
    if (gst_element_set_state(pipeline, GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        gst_element_set_state(pipeline, GST_STATE_NULL);
        const std::lock_guard<std::mutex> guard(m_shared->lock);
        *error = m_shared->lastError.isEmpty() ? u"the device could not be opened"_s : m_shared->lastError;
        m_shared->encoderSource.reset();
        return false;
    }
    m_pipeline = std::move(own);
    const std::lock_guard<std::mutex> guard(m_shared->lock);
    m_shared->running = true;
    for (Shared::Sink &sink : m_shared->sinks)
        sink.keyed = false;
    return true;
}

void NativeHuddleCapture::stop()
{
    {
        const std::lock_guard<std::mutex> guard(m_shared->lock);
        m_shared->running = false;
    }
    // Stopping joins the streaming threads, which take the lock.
    if (m_pipeline)
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    m_pipeline.reset();
    const std::lock_guard<std::mutex> guard(m_shared->lock);
    m_shared->encoderSource.reset();
}

void NativeHuddleCapture::feed(GstElement *appsrc)
{
    {
        const std::lock_guard<std::mutex> guard(m_shared->lock);
        for (const Shared::Sink &sink : m_shared->sinks) {
            if (sink.appsrc.get() == appsrc)
                return;
        }
        const NativeGst::Pad pad(gst_element_get_static_pad(appsrc, "src"));
        const gulong probe = gst_pad_add_probe(
            pad.get(), GST_PAD_PROBE_TYPE_EVENT_UPSTREAM, onUpstream, new SharedRef(m_shared), release);
        m_shared->sinks.push_back({ NativeGst::Element(GST_ELEMENT(gst_object_ref(appsrc))), probe, false });
    }
    m_shared->keyFrame();
}

void NativeHuddleCapture::unfeed(GstElement *appsrc)
{
    const std::lock_guard<std::mutex> guard(m_shared->lock);
    std::erase_if(m_shared->sinks, [appsrc](const Shared::Sink &sink) {
        if (sink.appsrc.get() != appsrc)
            return false;
        gst_pad_remove_probe(NativeGst::Pad(gst_element_get_static_pad(appsrc, "src")).get(), sink.probe);
        return true;
    });
}
