#pragma once

#include "screens/websites/NativeWebsitesView.h"

#include <QtQml/qqml.h>

// The websites screen's state and its list as QML sees them; the window builds them.
struct NativeWebsitesViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeWebsitesView)
    QML_NAMED_ELEMENT(NativeWebsitesView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeWebsiteModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeWebsiteModel)
    QML_NAMED_ELEMENT(NativeWebsiteModel)
    QML_UNCREATABLE("Built by the application.")
};
