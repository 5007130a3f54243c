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

struct NativeConnectionsViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeConnectionsView)
    QML_NAMED_ELEMENT(NativeConnectionsView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeFeedAccountModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeFeedAccountModel)
    QML_NAMED_ELEMENT(NativeFeedAccountModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeFeedRowModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeFeedRowModel)
    QML_NAMED_ELEMENT(NativeFeedRowModel)
    QML_UNCREATABLE("Built by the application.")
};
