#pragma once

#include "screens/calls/NativeCallsView.h"

#include <QtQml/qqml.h>

// The calls screen's state, its lists and its player as QML sees them; the window builds them.
struct NativeCallsViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeCallsView)
    QML_NAMED_ELEMENT(NativeCallsView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeCallModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeCallModel)
    QML_NAMED_ELEMENT(NativeCallModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeLeadModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeLeadModel)
    QML_NAMED_ELEMENT(NativeLeadModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeCallPlayerForeign {
    Q_GADGET
    QML_FOREIGN(NativeCallPlayer)
    QML_NAMED_ELEMENT(NativeCallPlayer)
    QML_UNCREATABLE("Built by the application.")
};
