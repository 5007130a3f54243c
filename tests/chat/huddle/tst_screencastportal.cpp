#include "TarnWaitFor.h"
#include "chat/huddle/NativeHuddleCapture.h"
#include "chat/huddle/NativeHuddleMedia.h"
#include "chat/huddle/NativeScreenCastPortal.h"

#include <gst/app/gstappsink.h>
#include <gst/video/video.h>

#include <QSignalSpy>
#include <QTest>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

// The size of every picture decoded on the receiving side.
struct Decoded {
    std::atomic<int> frames { 0 };
    std::atomic<int> width { 0 };
    std::atomic<int> height { 0 };
};

GstFlowReturn onDecoded(GstAppSink *sink, gpointer data)
{
    GstSample *sample = gst_app_sink_pull_sample(sink);
    if (!sample)
        return GST_FLOW_EOS;
    GstVideoInfo info;
    if (gst_video_info_from_caps(&info, gst_sample_get_caps(sample))) {
        auto *decoded = static_cast<Decoded *>(data);
        decoded->width = GST_VIDEO_INFO_WIDTH(&info);
        decoded->height = GST_VIDEO_INFO_HEIGHT(&info);
        ++decoded->frames;
    }
    gst_sample_unref(sample);
    return GST_FLOW_OK;
}

} // namespace

// The screen of a headless Wayland desktop (scripts/with-wayland-desktop),
// shared through its portal as a huddle shares it, encoded once and decoded
// on the receiving side.
class TestScreenCastPortal : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QString unavailable = qEnvironmentVariable("TARN_WAYLAND_UNAVAILABLE");
        if (!unavailable.isEmpty())
            QSKIP(qPrintable(u"no headless Wayland desktop here: "_s + unavailable));
        QVERIFY(NativeHuddleMedia::waylandSession());
        const QString plugin = NativeHuddleMedia::missingPlugin();
        if (!plugin.isEmpty())
            QSKIP(qPrintable(plugin));
    }

    void sharesTheScreenUntilClosed()
    {
        NativeScreenCastPortal portal;
        const NativeScreenCastPortal::Cast cast = tarnWaitFor(portal.start());
        QVERIFY2(cast.outcome == NativeScreenCastPortal::Outcome::Started, qPrintable(cast.error));
        QVERIFY(cast.fd >= 0);

        NativeHuddleCapture capture(HuddleCommand::Track::Screen);
        QSignalSpy stopped(&capture, &NativeHuddleCapture::stopped);
        QString error;
        QVERIFY2(capture.start(NativeHuddleMedia::pipeWireSource(cast.fd, cast.node), &error), qPrintable(error));

        const NativeGst::Element receiver(GST_ELEMENT(gst_object_ref_sink(gst_parse_launch(
            "appsrc name=in is-live=true format=time caps=video/x-vp8 ! vp8dec ! appsink name=out sync=false",
            nullptr))));
        const NativeGst::Element in(gst_bin_get_by_name(GST_BIN(receiver.get()), "in"));
        const NativeGst::Element out(gst_bin_get_by_name(GST_BIN(receiver.get()), "out"));
        Decoded decoded;
        GstAppSinkCallbacks callbacks {};
        callbacks.new_sample = onDecoded;
        gst_app_sink_set_callbacks(GST_APP_SINK(out.get()), &callbacks, &decoded, nullptr);
        gst_element_set_state(receiver.get(), GST_STATE_PLAYING);
        capture.feed(in.get());
        QTRY_VERIFY_WITH_TIMEOUT(decoded.frames >= 5, 15'000);
        QCOMPARE(decoded.width.load(), 1280);
        QCOMPARE(decoded.height.load(), 720);

        // The desktop ending the cast ends the capture, which is how a huddle
        // learns its screen is no longer shared.
        portal.close();
        QVERIFY(stopped.wait(10'000));
        capture.unfeed(in.get());
        gst_element_set_state(receiver.get(), GST_STATE_NULL);
    }
};

QTEST_GUILESS_MAIN(TestScreenCastPortal)
#include "tst_screencastportal.moc"
