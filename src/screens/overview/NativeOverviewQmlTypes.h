#pragma once

#include "screens/overview/NativeOverviewView.h"

#include <QtQml/qqml.h>

// The overview's state and its lists as QML sees them; the window builds them.
struct NativeOverviewViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeOverviewView)
    QML_NAMED_ELEMENT(NativeOverviewView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeTeamActivityModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeTeamActivityModel)
    QML_NAMED_ELEMENT(NativeTeamActivityModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeOrderModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeOrderModel)
    QML_NAMED_ELEMENT(NativeOrderModel)
    QML_UNCREATABLE("Built by the application.")
};
