#pragma once

#include "screens/company/NativeCompanyView.h"

#include <QtQml/qqml.h>

// The company screen's state and its lists as QML sees them; the window builds them.
struct NativeCompanyViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeCompanyView)
    QML_NAMED_ELEMENT(NativeCompanyView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeTeamModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeTeamModel)
    QML_NAMED_ELEMENT(NativeTeamModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSopModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSopModel)
    QML_NAMED_ELEMENT(NativeSopModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeThoughtModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeThoughtModel)
    QML_NAMED_ELEMENT(NativeThoughtModel)
    QML_UNCREATABLE("Built by the application.")
};
