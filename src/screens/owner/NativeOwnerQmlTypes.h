#pragma once

#include "screens/owner/NativeOwnerView.h"

#include <QtQml/qqml.h>

// The dashboard's state and its lists as QML sees them; the window builds them.
struct NativeOwnerViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeOwnerView)
    QML_NAMED_ELEMENT(NativeOwnerView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeOwnerFigureModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeOwnerFigureModel)
    QML_NAMED_ELEMENT(NativeOwnerFigureModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeTeamWeekModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeTeamWeekModel)
    QML_NAMED_ELEMENT(NativeTeamWeekModel)
    QML_UNCREATABLE("Built by the application.")
};
