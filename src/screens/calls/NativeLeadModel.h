#pragma once

#include "screens/calls/TarnSalesLead.h"
#include "shell/NativeKeyedListModel.h"

// The sales leads to call, by name: status, interest, owner, the number to
// dial and when they were last called.
class NativeLeadModel : public NativeKeyedListModel<TarnSalesLead, &TarnSalesLead::id> {
    Q_OBJECT

public:
    explicit NativeLeadModel(QObject *parent = nullptr);
};
