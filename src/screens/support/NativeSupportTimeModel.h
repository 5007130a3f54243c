#pragma once

#include "screens/support/TarnSupportTimeEntry.h"
#include "shell/NativeKeyedListModel.h"

// Logged time, newest day first: who, on what, how long, on which day.
class NativeSupportTimeModel : public NativeKeyedListModel<TarnSupportTimeEntry, &TarnSupportTimeEntry::id> {
    Q_OBJECT

public:
    explicit NativeSupportTimeModel(QObject *parent = nullptr);
};
