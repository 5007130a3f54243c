#pragma once

#include "screens/customers/NativeCustomersView.h"

#include <QtQml/qqml.h>

// The register's state as QML sees it; the window builds it.
struct NativeCustomersViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeCustomersView)
    QML_NAMED_ELEMENT(NativeCustomersView)
    QML_UNCREATABLE("Built by the application.")
};

// The lists the views hand out, so that tooling knows their type.
struct NativeCustomersListModelForeign {
    Q_GADGET
    QML_FOREIGN(QAbstractListModel)
    QML_ANONYMOUS
};

struct NativeCustomerProfileForeign {
    Q_GADGET
    QML_FOREIGN(NativeCustomerProfile)
    QML_NAMED_ELEMENT(NativeCustomerProfile)
    QML_UNCREATABLE("Built by the application.")
};
