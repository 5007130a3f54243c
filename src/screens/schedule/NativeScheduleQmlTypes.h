#pragma once

#include "screens/schedule/NativeScheduleView.h"

#include <QtQml/qqml.h>

// The schedule's state and its lists as QML sees them; the window builds them.
struct NativeScheduleViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeScheduleView)
    QML_NAMED_ELEMENT(NativeScheduleView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeScheduleDayModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeScheduleDayModel)
    QML_NAMED_ELEMENT(NativeScheduleDayModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeScheduleMonthModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeScheduleMonthModel)
    QML_NAMED_ELEMENT(NativeScheduleMonthModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeBookingLinkModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeBookingLinkModel)
    QML_NAMED_ELEMENT(NativeBookingLinkModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeBookingModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeBookingModel)
    QML_NAMED_ELEMENT(NativeBookingModel)
    QML_UNCREATABLE("Built by the application.")
};
