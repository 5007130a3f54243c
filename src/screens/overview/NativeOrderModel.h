#pragma once

#include "screens/overview/TarnOrder.h"
#include "shell/NativeKeyedListModel.h"

// Fulfilment's orders: the late first, then by the day they are due.
class NativeOrderModel : public NativeKeyedListModel<TarnOrder, &TarnOrder::id> {
    Q_OBJECT

public:
    explicit NativeOrderModel(QObject *parent = nullptr);
};
