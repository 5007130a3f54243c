#pragma once

#include "money/NativeBooksDashboard.h"
#include "money/NativeBooksView.h"
#include "money/NativePaymentsView.h"

#include <QtQml/qqml.h>

// The money screens' state objects as QML sees them; the window builds them.
struct NativeBooksViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeBooksView)
    QML_NAMED_ELEMENT(NativeBooksView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeBooksDashboardForeign {
    Q_GADGET
    QML_FOREIGN(NativeBooksDashboard)
    QML_NAMED_ELEMENT(NativeBooksDashboard)
    QML_UNCREATABLE("Built by the books view.")
};

struct NativePaymentsViewForeign {
    Q_GADGET
    QML_FOREIGN(NativePaymentsView)
    QML_NAMED_ELEMENT(NativePaymentsView)
    QML_UNCREATABLE("Built by the application.")
};

// The lists the views hand out, so that tooling knows their type.
struct QAbstractListModelForeign {
    Q_GADGET
    QML_FOREIGN(QAbstractListModel)
    QML_ANONYMOUS
};
