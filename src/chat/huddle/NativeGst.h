#pragma once

#include <gst/gst.h>
#include <gst/sdp/sdp.h>
#include <gst/webrtc/webrtc.h>

#include <QString>

#include <memory>

// Owning holders for the GStreamer objects the huddle keeps: each releases
// its object the one way GStreamer asks for.
namespace NativeGst {

struct ObjectUnref {
    void operator()(gpointer object) const { gst_object_unref(object); }
};
struct PromiseUnref {
    void operator()(GstPromise *promise) const { gst_promise_unref(promise); }
};
struct DescriptionFree {
    void operator()(GstWebRTCSessionDescription *description) const
    {
        gst_webrtc_session_description_free(description);
    }
};
struct TextFree {
    void operator()(gchar *text) const { g_free(text); }
};

using Element = std::unique_ptr<GstElement, ObjectUnref>;
using Pad = std::unique_ptr<GstPad, ObjectUnref>;
using Bus = std::unique_ptr<GstBus, ObjectUnref>;
using Promise = std::unique_ptr<GstPromise, PromiseUnref>;
using Description = std::unique_ptr<GstWebRTCSessionDescription, DescriptionFree>;
using Text = std::unique_ptr<gchar, TextFree>;

// A pipeline from its textual description, floating reference sunk; null
// with the reason in `error` when it cannot be made.
inline Element launch(const QString &description, QString *error)
{
    GError *parseError = nullptr;
    GstElement *pipeline = gst_parse_launch(description.toUtf8().constData(), &parseError);
    if (!pipeline || parseError) {
        *error = QString::fromUtf8(parseError ? parseError->message : "the pipeline could not be made");
        g_clear_error(&parseError);
        if (pipeline)
            gst_object_unref(pipeline);
        return nullptr;
    }
    return Element(GST_ELEMENT(gst_object_ref_sink(pipeline)));
}

} // namespace NativeGst
