#pragma once

#include "inbox/NativeInboxView.h"

#include <QtQml/qqml.h>

// The inbox screen's state and its lists as QML sees them; the window builds them.
struct NativeInboxViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeInboxView)
    QML_NAMED_ELEMENT(NativeInboxView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeInboxListModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeInboxListModel)
    QML_NAMED_ELEMENT(NativeInboxListModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeInboxEntryModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeInboxEntryModel)
    QML_NAMED_ELEMENT(NativeInboxEntryModel)
    QML_UNCREATABLE("Built by the application.")
};
