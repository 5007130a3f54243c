#pragma once

#include "screens/marketscan/NativeMarketScanView.h"

#include <QtQml/qqml.h>

// The market scan's state and its lists as QML sees them; the window builds them.
struct NativeMarketScanViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeMarketScanView)
    QML_NAMED_ELEMENT(NativeMarketScanView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeMarketScanModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeMarketScanModel)
    QML_NAMED_ELEMENT(NativeMarketScanModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeMarketBusinessModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeMarketBusinessModel)
    QML_NAMED_ELEMENT(NativeMarketBusinessModel)
    QML_UNCREATABLE("Built by the application.")
};
