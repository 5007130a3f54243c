#pragma once

#include "screens/portals/NativePortalsView.h"

#include <QtQml/qqml.h>

// The portals screen's state as QML sees it; the window builds it.
struct NativePortalsViewForeign {
    Q_GADGET
    QML_FOREIGN(NativePortalsView)
    QML_NAMED_ELEMENT(NativePortalsView)
    QML_UNCREATABLE("Built by the application.")
};

// The screen's lists are plain list models to QML.
struct NativePortalsListModelForeign {
    Q_GADGET
    QML_FOREIGN(QAbstractListModel)
    QML_ANONYMOUS
};
