#include "chat/huddle/NativeHuddleMedia.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QList>

#include <gst/gst.h>

#include <algorithm>
#include <mutex>

#include <unistd.h>

using namespace Qt::StringLiterals;

QString NativeHuddleMedia::missingPlugin()
{
    static std::once_flag once;
    static QString initError;
    std::call_once(once, [] {
        GError *error = nullptr;
        if (!gst_init_check(nullptr, nullptr, &error)) {
            initError = u"GStreamer could not start: "_s + QString::fromUtf8(error ? error->message : "unknown error");
            g_clear_error(&error);
        }
    });
    if (!initError.isEmpty())
        return initError;

    struct Needed {
        const char *plugin;
        const char *package;
    };
    static constexpr Needed needed[] {
        { "coreelements", "gstreamer1.0-plugins-base" },
        { "audiotestsrc", "gstreamer1.0-plugins-base" },
        { "audioconvert", "gstreamer1.0-plugins-base" },
        { "audioresample", "gstreamer1.0-plugins-base" },
        { "volume", "gstreamer1.0-plugins-base" },
        { "opus", "gstreamer1.0-plugins-base" },
        { "playback", "gstreamer1.0-plugins-base" },
        { "autodetect", "gstreamer1.0-plugins-good" },
        { "rtp", "gstreamer1.0-plugins-good" },
        { "rtpmanager", "gstreamer1.0-plugins-good" },
        { "webrtc", "gstreamer1.0-plugins-bad" },
        { "dtls", "gstreamer1.0-plugins-bad" },
        { "srtp", "gstreamer1.0-plugins-bad" },
        { "nice", "gstreamer1.0-nice" },
        { "vpx", "gstreamer1.0-plugins-good" },
        { "app", "gstreamer1.0-plugins-base" },
        { "videotestsrc", "gstreamer1.0-plugins-base" },
        { "videoconvertscale", "gstreamer1.0-plugins-base" },
        { "videorate", "gstreamer1.0-plugins-base" },
    };
    // A Wayland desktop's screen arrives over PipeWire; X11 needs no plugin for it.
    static constexpr Needed screenCast { "pipewire", "gstreamer1.0-pipewire" };
    QList<Needed> wanted(std::begin(needed), std::end(needed));
    if (waylandSession())
        wanted.append(screenCast);
    GstRegistry *registry = gst_registry_get();
    for (const Needed &need : std::as_const(wanted)) {
        GstPlugin *plugin = gst_registry_find_plugin(registry, need.plugin);
        if (!plugin)
            return u"Huddles need the GStreamer plugin \"%1\" (Debian package %2)."_s.arg(
                QLatin1StringView(need.plugin), QLatin1StringView(need.package));
        gst_object_unref(plugin);
    }
    return {};
}

bool NativeHuddleMedia::hasMicrophone()
{
    GstDeviceMonitor *monitor = gst_device_monitor_new();
    gst_device_monitor_add_filter(monitor, "Audio/Source", nullptr);
    bool found = false;
    if (gst_device_monitor_start(monitor)) {
        GList *devices = gst_device_monitor_get_devices(monitor);
        found = devices != nullptr;
        g_list_free_full(devices, gst_object_unref);
        gst_device_monitor_stop(monitor);
    }
    gst_object_unref(monitor);
    return found;
}

NativeHuddleMedia::Camera NativeHuddleMedia::findCamera()
{
    const QDir devices(u"/dev"_s);
    const QStringList cameras = devices.entryList({ u"video*"_s }, QDir::System);
    if (cameras.isEmpty())
        return Camera::Missing;
    // The device files are the desktop's camera permission: a user outside
    // their group (or a sandbox without the camera) cannot open them.
    const bool allowed = std::any_of(cameras.cbegin(), cameras.cend(), [&](const QString &name) {
        return ::access(QFile::encodeName(devices.filePath(name)).constData(), R_OK | W_OK) == 0;
    });
    return allowed ? Camera::Present : Camera::Denied;
}

QString NativeHuddleMedia::cameraSource() const
{
    return testSources ? u"videotestsrc is-live=true pattern=ball"_s : u"v4l2src"_s;
}

QString NativeHuddleMedia::screenSource(QString *error) const
{
    if (testSources)
        return u"videotestsrc is-live=true pattern=smpte"_s;
    if (waylandSession() || qEnvironmentVariableIsEmpty("DISPLAY")) {
        *error = u"this desktop does not let the app capture its screen"_s;
        return {};
    }
    return u"ximagesrc use-damage=false show-pointer=true"_s;
}

bool NativeHuddleMedia::waylandSession()
{
    if (qEnvironmentVariable("XDG_SESSION_TYPE") == "wayland"_L1)
        return true;
    // A compositor nested in an X11 session sets WAYLAND_DISPLAY too; only
    // an app drawn by it is on a Wayland desktop.
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && QGuiApplication::platformName() == "wayland"_L1;
}

QString NativeHuddleMedia::pipeWireSource(int fd, quint32 node)
{
    return u"pipewiresrc fd=%1 path=%2 do-timestamp=true"_s.arg(QString::number(fd), QString::number(node));
}
