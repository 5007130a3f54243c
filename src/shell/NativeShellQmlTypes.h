#pragma once

#include "shell/NativeBoardModel.h"
#include "shell/NativeChoiceModel.h"
#include "shell/NativeCommandSearch.h"
#include "shell/NativeSettingsState.h"
#include "shell/NativeSidebarModel.h"
#include "shell/TarnNavigation.h"

#include <QtQml/qqml.h>

// The shell's state objects as QML sees them. main builds them and hands
// them to the window; QML never creates them.
struct TarnNavigationForeign {
    Q_GADGET
    QML_FOREIGN(TarnNavigation)
    QML_NAMED_ELEMENT(TarnNavigation)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSettingsStateForeign {
    Q_GADGET
    QML_FOREIGN(NativeSettingsState)
    QML_NAMED_ELEMENT(NativeSettingsState)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeCommandSearchForeign {
    Q_GADGET
    QML_FOREIGN(NativeCommandSearch)
    QML_NAMED_ELEMENT(NativeCommandSearch)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSidebarModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSidebarModel)
    QML_NAMED_ELEMENT(NativeSidebarModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeBoardModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeBoardModel)
    QML_NAMED_ELEMENT(NativeBoardModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeChoiceModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeChoiceModel)
    QML_NAMED_ELEMENT(NativeChoiceModel)
    QML_UNCREATABLE("Built by the application.")
};

// The records those objects hand out, so that QML tooling knows their
// properties.
struct TarnDestinationForeign {
    Q_GADGET
    QML_FOREIGN(TarnDestination)
    QML_VALUE_TYPE(tarnDestination)
};

struct TarnAccessForeign {
    Q_GADGET
    QML_FOREIGN(TarnAccess)
    QML_VALUE_TYPE(tarnAccess)
};

struct TarnNavChildForeign {
    Q_GADGET
    QML_FOREIGN(TarnNavChild)
    QML_VALUE_TYPE(tarnNavChild)
};

struct TarnNavChildGroupForeign {
    Q_GADGET
    QML_FOREIGN(TarnNavChildGroup)
    QML_VALUE_TYPE(tarnNavChildGroup)
};

struct TarnNavItemForeign {
    Q_GADGET
    QML_FOREIGN(TarnNavItem)
    QML_VALUE_TYPE(tarnNavItem)
};

struct TarnActiveForeign {
    Q_GADGET
    QML_FOREIGN(TarnShell::Active)
    QML_VALUE_TYPE(tarnActive)
};

struct TarnBoardGroupForeign {
    Q_GADGET
    QML_FOREIGN(TarnBoardGroup)
    QML_VALUE_TYPE(tarnBoardGroup)
};

struct TarnAdminAreaForeign {
    Q_GADGET
    QML_FOREIGN(TarnAdminArea)
    QML_VALUE_TYPE(tarnAdminArea)
};

struct TarnChatCreateRequestForeign {
    Q_GADGET
    QML_FOREIGN(TarnChatCreateRequest)
    QML_VALUE_TYPE(tarnChatCreateRequest)
};

struct TarnOpenRecordForeign {
    Q_GADGET
    QML_FOREIGN(TarnOpenRecord)
    QML_VALUE_TYPE(tarnOpenRecord)
};
