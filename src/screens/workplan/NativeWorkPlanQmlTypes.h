#pragma once

#include "screens/workplan/NativeWorkPlanView.h"

#include <QtQml/qqml.h>

// The work plan's state and its lists as QML sees them; the window builds them.
struct NativeWorkPlanViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeWorkPlanView)
    QML_NAMED_ELEMENT(NativeWorkPlanView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeWorkEntryModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeWorkEntryModel)
    QML_NAMED_ELEMENT(NativeWorkEntryModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeWorkPersonModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeWorkPersonModel)
    QML_NAMED_ELEMENT(NativeWorkPersonModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeCoachNoteModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeCoachNoteModel)
    QML_NAMED_ELEMENT(NativeCoachNoteModel)
    QML_UNCREATABLE("Built by the application.")
};
