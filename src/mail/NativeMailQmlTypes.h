#pragma once

#include "mail/NativeMailBlockModel.h"
#include "mail/NativeMailView.h"

#include <QtQml/qqml.h>

// The mail screen's state and its lists as QML sees them; the window builds
// the state, each message's delegate makes its block model.
struct NativeMailViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeMailView)
    QML_NAMED_ELEMENT(NativeMailView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeMailComposerForeign {
    Q_GADGET
    QML_FOREIGN(NativeMailComposer)
    QML_NAMED_ELEMENT(NativeMailComposer)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeMailThreadModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeMailThreadModel)
    QML_NAMED_ELEMENT(NativeMailThreadModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeMailMessageModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeMailMessageModel)
    QML_NAMED_ELEMENT(NativeMailMessageModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeMailImagesForeign {
    Q_GADGET
    QML_FOREIGN(NativeMailImages)
    QML_NAMED_ELEMENT(NativeMailImages)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeMailBlockModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeMailBlockModel)
    QML_NAMED_ELEMENT(NativeMailBlockModel)
};
