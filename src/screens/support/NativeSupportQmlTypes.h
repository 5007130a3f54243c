#pragma once

#include "screens/support/NativeSupportView.h"

#include <QtQml/qqml.h>

// The support screen's state and its lists as QML sees them; the window builds them.
struct NativeSupportViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportView)
    QML_NAMED_ELEMENT(NativeSupportView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSupportTaskDetailForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportTaskDetail)
    QML_NAMED_ELEMENT(NativeSupportTaskDetail)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSupportCardModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportCardModel)
    QML_NAMED_ELEMENT(NativeSupportCardModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSupportNoteModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportNoteModel)
    QML_NAMED_ELEMENT(NativeSupportNoteModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSupportTimeModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportTimeModel)
    QML_NAMED_ELEMENT(NativeSupportTimeModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSupportFileModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportFileModel)
    QML_NAMED_ELEMENT(NativeSupportFileModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSupportRecurringModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportRecurringModel)
    QML_NAMED_ELEMENT(NativeSupportRecurringModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSupportViewModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSupportViewModel)
    QML_NAMED_ELEMENT(NativeSupportViewModel)
    QML_UNCREATABLE("Built by the application.")
};
