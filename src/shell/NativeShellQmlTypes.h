#pragma once

#include "shell/NativeCommandSearch.h"
#include "shell/NativeSettingsState.h"
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
