#include "chat/huddle/NativeHuddlePeer.h"

#include "chat/huddle/NativeHuddleCapture.h"
#include "chat/huddle/NativeHuddleTrack.h"

#include <QMetaObject>
#include <QUrl>

#include <atomic>
#include <mutex>

using namespace Qt::StringLiterals;

// What the GStreamer callbacks share with the peer. Every callback holds a
// reference, so it outlives the peer when GStreamer releases late.
struct NativeHuddlePeer::Relay {
    std::mutex lock;
    NativeHuddlePeer *target = nullptr;
    GstElement *pipeline = nullptr; // owned by the peer; stopped before it goes
    bool playAudio = true;
    std::atomic<qint64> decoded { 0 };
    std::shared_ptr<NativeHuddleTrack::Slot> camera;
    std::shared_ptr<NativeHuddleTrack::Slot> screen;

    // The pipeline, held for the caller; nothing once the peer is going away.
    NativeGst::Element pipelineRef()
    {
        const std::lock_guard<std::mutex> guard(lock);
        return NativeGst::Element(pipeline ? GST_ELEMENT(gst_object_ref(pipeline)) : nullptr);
    }

    // Runs `work` on the peer's thread, unless the peer is going away.
    template <typename Work> void post(Work work)
    {
        const std::lock_guard<std::mutex> guard(lock);
        if (target)
            QMetaObject::invokeMethod(target, std::move(work), Qt::QueuedConnection);
    }
};

namespace {

using Track = HuddleCommand::Track;
using Relay = NativeHuddlePeer::Relay;
using SlotRef = std::shared_ptr<NativeHuddleTrack::Slot>;

// Camera and screen travel as VP8 under payload types of their own.
constexpr int cameraPayload = 97;
constexpr int screenPayload = 98;

int payloadOf(Track track)
{
    return track == Track::Camera ? cameraPayload : screenPayload;
}

QByteArray videoCaps(Track track)
{
    return "application/x-rtp,media=video,encoding-name=VP8,clock-rate=90000,payload="
        + QByteArray::number(payloadOf(track));
}
using RelayRef = std::shared_ptr<Relay>;

Relay &relayOf(gpointer data)
{
    return **static_cast<RelayRef *>(data);
}

gpointer share(const RelayRef &relay)
{
    return new RelayRef(relay);
}

void release(gpointer data)
{
    delete static_cast<RelayRef *>(data);
}

void releaseClosure(gpointer data, GClosure *)
{
    release(data);
}

template <typename Callback>
void connectRelay(GstElement *element, const char *name, Callback callback, const RelayRef &relay)
{
    g_signal_connect_data(element, name, G_CALLBACK(callback), share(relay), releaseClosure, GConnectFlags(0));
}

void onIceCandidate(GstElement *, guint mline, gchar *candidate, gpointer data)
{
    if (!candidate || !*candidate)
        return;
    TarnHuddleCandidate found { .candidate = QString::fromUtf8(candidate), .sdpMLineIndex = mline };
    Relay &relay = relayOf(data);
    relay.post([&relay, found] {
        if (relay.target)
            Q_EMIT relay.target->localCandidate(found);
    });
}

void onIceState(GstElement *webrtc, GParamSpec *, gpointer data)
{
    GstWebRTCICEConnectionState state = GST_WEBRTC_ICE_CONNECTION_STATE_NEW;
    g_object_get(webrtc, "ice-connection-state", &state, nullptr);
    using Link = NativeHuddlePeer::Link;
    Link link = Link::Connecting;
    switch (state) {
    case GST_WEBRTC_ICE_CONNECTION_STATE_CONNECTED:
    case GST_WEBRTC_ICE_CONNECTION_STATE_COMPLETED:
        link = Link::Connected;
        break;
    case GST_WEBRTC_ICE_CONNECTION_STATE_DISCONNECTED:
        link = Link::Interrupted;
        break;
    case GST_WEBRTC_ICE_CONNECTION_STATE_FAILED:
        link = Link::Failed;
        break;
    default:
        return;
    }
    Relay &relay = relayOf(data);
    relay.post([&relay, link] {
        if (relay.target)
            Q_EMIT relay.target->linkChanged(link);
    });
}

GstPadProbeReturn countDecoded(GstPad *, GstPadProbeInfo *, gpointer data)
{
    Relay &relay = relayOf(data);
    if (relay.decoded.fetch_add(1) == 0)
        relay.post([&relay] {
            if (relay.target)
                Q_EMIT relay.target->remoteAudioStarted();
        });
    return GST_PAD_PROBE_OK;
}

// Decoded audio: counted, then played on the desktop's speaker (or dropped).
void onDecodedPad(GstElement *, GstPad *pad, gpointer data)
{
    Relay &relay = relayOf(data);
    const NativeGst::Pad ownRef(GST_PAD(gst_object_ref(pad)));
    GstCaps *caps = gst_pad_get_current_caps(pad);
    const bool audio = caps && g_str_has_prefix(gst_structure_get_name(gst_caps_get_structure(caps, 0)), "audio/");
    if (caps)
        gst_caps_unref(caps);
    const NativeGst::Element pipeline = relay.pipelineRef();
    if (!audio || !pipeline)
        return;
    GstElement *sink = gst_parse_bin_from_description(
        relay.playAudio ? "audioconvert ! audioresample ! autoaudiosink" : "fakesink sync=false", TRUE, nullptr);
    if (!sink)
        return;
    gst_bin_add(GST_BIN(pipeline.get()), sink);
    gst_element_sync_state_with_parent(sink);
    const NativeGst::Pad sinkPad(gst_element_get_static_pad(sink, "sink"));
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, countDecoded, share(*static_cast<RelayRef *>(data)), release);
    gst_pad_link(pad, sinkPad.get());
}

// The participant's camera or screen, decoded into frames for its track.
void decodeVideo(GstElement *pipeline, GstPad *pad, const SlotRef &slot)
{
    GstElement *decode = gst_parse_bin_from_description("rtpvp8depay ! vp8dec ! videoconvert ! video/x-raw,format=BGRx"
                                                        " ! appsink name=frames sync=false max-buffers=1 drop=true",
        TRUE, nullptr);
    if (!decode)
        return;
    const NativeGst::Element frames(gst_bin_get_by_name(GST_BIN(decode), "frames"));
    NativeHuddleTrack::follow(frames.get(), slot);
    gst_bin_add(GST_BIN(pipeline), decode);
    gst_element_sync_state_with_parent(decode);
    const NativeGst::Pad sinkPad(gst_element_get_static_pad(decode, "sink"));
    gst_pad_link(pad, sinkPad.get());
}

// A remote stream arrived: decode it.
void onRemotePad(GstElement *, GstPad *pad, gpointer data)
{
    if (GST_PAD_DIRECTION(pad) != GST_PAD_SRC)
        return;
    Relay &relay = relayOf(data);
    const NativeGst::Element pipeline = relay.pipelineRef();
    if (!pipeline)
        return;
    GstCaps *caps = gst_pad_get_current_caps(pad);
    const GstStructure *stream = caps ? gst_caps_get_structure(caps, 0) : nullptr;
    const bool video = stream && g_strcmp0(gst_structure_get_string(stream, "media"), "video") == 0;
    int payload = 0;
    if (stream)
        gst_structure_get_int(stream, "payload", &payload);
    if (caps)
        gst_caps_unref(caps);
    if (video) {
        decodeVideo(pipeline.get(), pad, payload == screenPayload ? relay.screen : relay.camera);
        return;
    }
    GstElement *decode = gst_element_factory_make("decodebin", nullptr);
    connectRelay(decode, "pad-added", onDecodedPad, *static_cast<RelayRef *>(data));
    gst_bin_add(GST_BIN(pipeline.get()), decode);
    gst_element_sync_state_with_parent(decode);
    const NativeGst::Pad sinkPad(gst_element_get_static_pad(decode, "sink"));
    gst_pad_link(pad, sinkPad.get());
}

void onDescribed(GstPromise *promise, gpointer data)
{
    const NativeGst::Promise own(promise);
    if (gst_promise_wait(promise) != GST_PROMISE_RESULT_REPLIED)
        return;
    const GstStructure *reply = gst_promise_get_reply(promise);
    GstWebRTCSessionDescription *made = nullptr;
    const bool offer = gst_structure_has_field(reply, "offer");
    gst_structure_get(reply, offer ? "offer" : "answer", GST_TYPE_WEBRTC_SESSION_DESCRIPTION, &made, nullptr);
    if (!made)
        return;
    const NativeGst::Description description(made);
    const NativeGst::Text text(gst_sdp_message_as_text(description->sdp));
    TarnHuddleDescription local { offer ? u"offer"_s : u"answer"_s, QString::fromUtf8(text.get()) };
    Relay &relay = relayOf(data);
    // Set here, before anything else reaches webrtcbin's queue of operations,
    // so that the candidates it gathers belong to this description.
    const NativeGst::Element pipeline = relay.pipelineRef();
    if (!pipeline)
        return;
    const NativeGst::Element webrtc(gst_bin_get_by_name(GST_BIN(pipeline.get()), "webrtc"));
    g_signal_emit_by_name(webrtc.get(), "set-local-description", description.get(), nullptr);
    relay.post([&relay, local] {
        if (relay.target)
            Q_EMIT relay.target->descriptionCreated(local);
    });
}

// "stun:host:port" as webrtcbin spells it ("stun://host:port"); TURN with
// its credentials in the address.
QString gstAddress(const QString &url, const TarnHuddleIceServer &server)
{
    const qsizetype colon = url.indexOf(u':');
    const QString scheme = url.left(colon);
    QString rest = url.mid(colon + 1);
    if (rest.startsWith("//"_L1))
        rest = rest.mid(2);
    if (scheme.startsWith("turn"_L1) && server.username)
        rest = QString::fromLatin1(QUrl::toPercentEncoding(*server.username)) + u':'
            + QString::fromLatin1(QUrl::toPercentEncoding(server.credential.value_or(QString()))) + u'@' + rest;
    return scheme + u"://"_s + rest;
}

} // namespace

NativeHuddlePeer::NativeHuddlePeer(QString id, QString conn, const QList<TarnHuddleIceServer> &iceServers,
    const NativeHuddleMedia &media, bool muted, QObject *parent)
    : QObject(parent)
    , m_id(std::move(id))
    , m_conn(std::move(conn))
    , m_iceServers(iceServers)
    , m_media(media)
    , m_muted(muted)
    , m_relay(std::make_shared<Relay>())
    , m_camera(new NativeHuddleTrack(this))
    , m_screen(new NativeHuddleTrack(this))
{
    m_relay->camera = m_camera->slot();
    m_relay->screen = m_screen->slot();
}

NativeHuddlePeer::~NativeHuddlePeer()
{
    {
        const std::lock_guard<std::mutex> guard(m_relay->lock);
        m_relay->target = nullptr;
        m_relay->pipeline = nullptr;
    }
    // Stopping joins GStreamer's streaming threads: no callback runs after it.
    if (m_pipeline)
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
}

bool NativeHuddlePeer::start(QString *error)
{
    const QString source = m_media.testSources ? u"audiotestsrc is-live=true wave=sine freq=440"_s
        : m_media.microphone                   ? u"autoaudiosrc"_s
                                               : u"audiotestsrc is-live=true wave=silence"_s;
    // The payload's caps in full: webrtcbin builds its offer from them.
    const QString description = source
        + u" ! audioconvert ! audioresample ! volume name=mic ! opusenc ! rtpopuspay pt=96"
          " ! application/x-rtp,media=audio,encoding-name=OPUS,payload=96,clock-rate=48000"
          " ! webrtcbin name=webrtc bundle-policy=max-bundle latency=100"_s;
    m_pipeline = NativeGst::launch(description, error);
    if (!m_pipeline)
        return false;
    GstElement *pipeline = m_pipeline.get();
    m_webrtc.reset(gst_bin_get_by_name(GST_BIN(pipeline), "webrtc"));
    m_mic.reset(gst_bin_get_by_name(GST_BIN(pipeline), "mic"));
    g_object_set(m_mic.get(), "mute", gboolean(m_muted), nullptr);

    bool stunSet = false;
    for (const TarnHuddleIceServer &server : std::as_const(m_iceServers)) {
        for (const QString &url : server.urls) {
            const QByteArray address = gstAddress(url, server).toUtf8();
            if (url.startsWith("stun"_L1) && !stunSet) {
                g_object_set(m_webrtc.get(), "stun-server", address.constData(), nullptr);
                stunSet = true;
            } else if (url.startsWith("turn"_L1)) {
                gboolean added = FALSE;
                g_signal_emit_by_name(m_webrtc.get(), "add-turn-server", address.constData(), &added);
            }
        }
    }

    m_relay->target = this;
    m_relay->pipeline = m_pipeline.get();
    m_relay->playAudio = m_media.playAudio;
    connectRelay(m_webrtc.get(), "on-ice-candidate", onIceCandidate, m_relay);
    connectRelay(m_webrtc.get(), "notify::ice-connection-state", onIceState, m_relay);
    connectRelay(m_webrtc.get(), "pad-added", onRemotePad, m_relay);
    if (gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        *error = m_media.testSources ? u"the audio pipeline did not start"_s : u"the microphone could not be opened"_s;
        return false;
    }
    return true;
}

void NativeHuddlePeer::describe(bool offer)
{
    GstPromise *promise = gst_promise_new_with_change_func(onDescribed, share(m_relay), release);
    g_signal_emit_by_name(m_webrtc.get(), offer ? "create-offer" : "create-answer", nullptr, promise);
}

void NativeHuddlePeer::createOffer()
{
    describe(true);
}

void NativeHuddlePeer::createAnswer()
{
    describe(false);
}

void NativeHuddlePeer::setRemoteDescription(const TarnHuddleDescription &description)
{
    GstSDPMessage *sdp = nullptr;
    const QByteArray text = description.sdp.toUtf8();
    if (gst_sdp_message_new_from_text(text.constData(), &sdp) != GST_SDP_OK)
        return;
    const NativeGst::Description remote(gst_webrtc_session_description_new(
        description.type == "offer"_L1 ? GST_WEBRTC_SDP_TYPE_OFFER : GST_WEBRTC_SDP_TYPE_ANSWER, sdp));
    g_signal_emit_by_name(m_webrtc.get(), "set-remote-description", remote.get(), nullptr);
}

void NativeHuddlePeer::addCandidate(const TarnHuddleCandidate &candidate)
{
    const QByteArray text = candidate.candidate.toUtf8();
    g_signal_emit_by_name(m_webrtc.get(), "add-ice-candidate", guint(candidate.sdpMLineIndex), text.constData());
}

void NativeHuddlePeer::setMuted(bool muted)
{
    m_muted = muted;
    if (m_mic)
        g_object_set(m_mic.get(), "mute", gboolean(muted), nullptr);
}

qint64 NativeHuddlePeer::decodedAudioBuffers() const
{
    return m_relay->decoded.load();
}

bool NativeHuddlePeer::sendVideo(Track track, NativeHuddleCapture &capture)
{
    NativeGst::Element &source = track == Track::Camera ? m_cameraSource : m_screenSource;
    const bool added = !source;
    if (added) {
        const QByteArray description = "appsrc name=source is-live=true do-timestamp=true format=time caps=video/x-vp8"
                                       " ! rtpvp8pay picture-id-mode=15-bit pt="
            + QByteArray::number(payloadOf(track)) + " ! " + videoCaps(track);
        GstElement *bin = gst_parse_bin_from_description(description.constData(), TRUE, nullptr);
        if (!bin)
            return false;
        gst_bin_add(GST_BIN(m_pipeline.get()), bin);
        source.reset(gst_bin_get_by_name(GST_BIN(bin), "source"));
        // A new transceiver: webrtcbin puts it in the next offer. Its codec is
        // given outright, as the offer may be made before the pad's caps
        // have been worked out from the elements behind it.
        const NativeGst::Pad sink(gst_element_request_pad_simple(m_webrtc.get(), "sink_%u"));
        GstWebRTCRTPTransceiver *transceiver = nullptr;
        g_object_get(sink.get(), "transceiver", &transceiver, nullptr);
        if (transceiver) {
            GstCaps *caps = gst_caps_from_string(videoCaps(track).constData());
            g_object_set(transceiver, "codec-preferences", caps, nullptr);
            gst_caps_unref(caps);
            gst_object_unref(transceiver);
        }
        const NativeGst::Pad out(gst_element_get_static_pad(bin, "src"));
        gst_pad_link(out.get(), sink.get());
        gst_element_sync_state_with_parent(bin);
    }
    capture.feed(source.get());
    return added;
}

GstElement *NativeHuddlePeer::videoSource(Track track) const
{
    return (track == Track::Camera ? m_cameraSource : m_screenSource).get();
}

void NativeHuddlePeer::receive(Track track)
{
    GstCaps *caps = gst_caps_from_string(videoCaps(track).constData());
    GstWebRTCRTPTransceiver *transceiver = nullptr;
    g_signal_emit_by_name(
        m_webrtc.get(), "add-transceiver", GST_WEBRTC_RTP_TRANSCEIVER_DIRECTION_RECVONLY, caps, &transceiver);
    gst_caps_unref(caps);
    if (transceiver)
        gst_object_unref(transceiver);
}

NativeHuddleTrack *NativeHuddlePeer::video(Track track) const
{
    return track == Track::Camera ? m_camera : m_screen;
}
