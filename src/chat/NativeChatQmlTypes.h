#pragma once

#include "chat/NativeChatView.h"
#include "chat/huddle/NativeHuddleVideo.h"
#include "chat/huddle/NativeHuddleView.h"

#include <QtQml/qqml.h>

// The chat screen's state and its lists as QML sees them; the window builds them.
struct NativeChatViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeChatView)
    QML_NAMED_ELEMENT(NativeChatView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeChatRoomModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeChatRoomModel)
    QML_NAMED_ELEMENT(NativeChatRoomModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeChatTimelineModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeChatTimelineModel)
    QML_NAMED_ELEMENT(NativeChatTimelineModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeChatSearchModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeChatSearchModel)
    QML_NAMED_ELEMENT(NativeChatSearchModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeGifPickerForeign {
    Q_GADGET
    QML_FOREIGN(NativeGifPicker)
    QML_NAMED_ELEMENT(NativeGifPicker)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeGifModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeGifModel)
    QML_NAMED_ELEMENT(NativeGifModel)
    QML_UNCREATABLE("Built by the application.")
};

// The window's one huddle, drawn by its bar and the room header.
struct NativeHuddleViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeHuddleView)
    QML_NAMED_ELEMENT(NativeHuddleView)
    QML_UNCREATABLE("Built by the application.")
};

// One participant's camera or screen, handed out by NativeHuddleView.videoTrack.
struct NativeHuddleTrackForeign {
    Q_GADGET
    QML_FOREIGN(NativeHuddleTrack)
    QML_NAMED_ELEMENT(NativeHuddleTrack)
    QML_UNCREATABLE("Handed out by the huddle.")
};

// A video tile QML places and gives a track.
struct NativeHuddleVideoForeign {
    Q_GADGET
    QML_FOREIGN(NativeHuddleVideo)
    QML_NAMED_ELEMENT(NativeHuddleVideo)
};
