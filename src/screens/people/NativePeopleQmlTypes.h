#pragma once

#include "screens/people/NativePeopleView.h"

#include <QtQml/qqml.h>

// The people screen's state and its lists as QML sees them; the window builds them.
struct NativePeopleViewForeign {
    Q_GADGET
    QML_FOREIGN(NativePeopleView)
    QML_NAMED_ELEMENT(NativePeopleView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeHRViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeHRView)
    QML_NAMED_ELEMENT(NativeHRView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeHRRecordModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeHRRecordModel)
    QML_NAMED_ELEMENT(NativeHRRecordModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeTimeClockViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeTimeClockView)
    QML_NAMED_ELEMENT(NativeTimeClockView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativePayrollViewForeign {
    Q_GADGET
    QML_FOREIGN(NativePayrollView)
    QML_NAMED_ELEMENT(NativePayrollView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeTimeClockDayModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeTimeClockDayModel)
    QML_NAMED_ELEMENT(NativeTimeClockDayModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeTimeEntryModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeTimeEntryModel)
    QML_NAMED_ELEMENT(NativeTimeEntryModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativePayrollLineModelForeign {
    Q_GADGET
    QML_FOREIGN(NativePayrollLineModel)
    QML_NAMED_ELEMENT(NativePayrollLineModel)
    QML_UNCREATABLE("Built by the application.")
};
