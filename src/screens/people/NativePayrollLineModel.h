#pragma once

#include "screens/people/TarnPayrollLine.h"
#include "shell/NativeKeyedListModel.h"

// A pay period's lines by name: hours, rate, pay, the adjustments (each a
// map of id, label and amount) and the total, money as the screens show it.
class NativePayrollLineModel : public NativeKeyedListModel<TarnPayrollLine, &TarnPayrollLine::person_id> {
    Q_OBJECT

public:
    explicit NativePayrollLineModel(QObject *parent = nullptr);
};
