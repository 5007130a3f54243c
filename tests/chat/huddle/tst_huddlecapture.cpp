#include "chat/huddle/NativeHuddleCapture.h"
#include "chat/huddle/NativeHuddleMedia.h"

#include <QSignalSpy>
#include <QTest>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

struct Received {
    std::atomic<int> buffers { 0 };
    std::atomic<bool> firstWasKey { false };
};

GstPadProbeReturn count(GstPad *, GstPadProbeInfo *info, gpointer data)
{
    auto *received = static_cast<Received *>(data);
    if (received->buffers.fetch_add(1) == 0)
        received->firstWasKey = !GST_BUFFER_FLAG_IS_SET(GST_PAD_PROBE_INFO_BUFFER(info), GST_BUFFER_FLAG_DELTA_UNIT);
    return GST_PAD_PROBE_OK;
}

} // namespace

// One capture encoding for every receiver, with generated pictures.
class TestHuddleCapture : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(NativeHuddleMedia::missingPlugin().isEmpty(), "GStreamer plugins are missing"); }

    void endsOrFails_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<bool>("starts");
        QTest::addRow("the source ends (a screen cast closed)") << u"videotestsrc num-buffers=12"_s << true;
        QTest::addRow("no such device") << u"v4l2src device=/dev/no-camera-here"_s << false;
        QTest::addRow("not a source at all") << u"no-such-element"_s << false;
    }

    void endsOrFails()
    {
        QFETCH(QString, source);
        QFETCH(bool, starts);
        NativeHuddleCapture capture(HuddleCommand::Track::Screen);
        QSignalSpy stopped(&capture, &NativeHuddleCapture::stopped);
        QString error;
        QCOMPARE(capture.start(source, &error), starts);
        QCOMPARE(error.isEmpty(), starts);
        if (!starts)
            return;
        QVERIFY(stopped.wait(5000));
        QCOMPARE(stopped.constFirst().constFirst().toString(), QString());
        QVERIFY(!capture.running());
    }

    void aReceiverStartsOnAKeyFrame()
    {
        NativeHuddleCapture capture(HuddleCommand::Track::Camera);
        QString error;
        QVERIFY2(capture.start(u"videotestsrc is-live=true"_s, &error), qPrintable(error));
        Receiver first;
        Receiver later;
        capture.feed(first.in.get());
        QTRY_VERIFY(first.received.buffers > 30);
        // Joining a running capture: no frame until a key frame, asked for at once.
        capture.feed(later.in.get());
        QTRY_VERIFY(later.received.buffers > 0);
        QVERIFY(first.received.firstWasKey && later.received.firstWasKey);
        capture.unfeed(first.in.get());
        capture.unfeed(later.in.get());
    }

private:
    // A peer's source element, in a pipeline that counts what it sends.
    struct Receiver {
        NativeGst::Element pipeline { GST_ELEMENT(
            gst_object_ref_sink(gst_parse_launch("appsrc name=in is-live=true format=time ! fakesink", nullptr))) };
        NativeGst::Element in { gst_bin_get_by_name(GST_BIN(pipeline.get()), "in") };
        Received received;

        Receiver()
        {
            const NativeGst::Pad out(gst_element_get_static_pad(in.get(), "src"));
            gst_pad_add_probe(out.get(), GST_PAD_PROBE_TYPE_BUFFER, count, &received, nullptr);
            gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
        }
        ~Receiver() { gst_element_set_state(pipeline.get(), GST_STATE_NULL); }
    };
};

QTEST_GUILESS_MAIN(TestHuddleCapture)
#include "tst_huddlecapture.moc"
