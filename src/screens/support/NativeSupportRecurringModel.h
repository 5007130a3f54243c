#pragma once

#include "screens/support/TarnSupportRecurring.h"
#include "shell/NativeKeyedListModel.h"

// The recurring rules, running ones first.
class NativeSupportRecurringModel : public NativeKeyedListModel<TarnSupportRecurring, &TarnSupportRecurring::id> {
    Q_OBJECT

public:
    explicit NativeSupportRecurringModel(QObject *parent = nullptr);
};
