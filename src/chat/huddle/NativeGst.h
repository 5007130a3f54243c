#pragma once

#include <gst/gst.h>
#include <gst/sdp/sdp.h>
#include <gst/webrtc/webrtc.h>

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

} // namespace NativeGst
