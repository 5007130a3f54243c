#pragma once

#include "screens/kiln/NativeKilnView.h"

#include <QtQml/qqml.h>

// The web workspace's state as QML sees it; the window builds it.
struct NativeKilnViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeKilnView)
    QML_NAMED_ELEMENT(NativeKilnView)
    QML_UNCREATABLE("Built by the application.")
};
