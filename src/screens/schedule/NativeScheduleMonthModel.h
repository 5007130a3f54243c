#pragma once

#include "screens/schedule/ScheduleMonthDay.h"
#include "shell/NativeKeyedListModel.h"

// The month grid's 42 days, each with its count and first titles.
class NativeScheduleMonthModel : public NativeKeyedListModel<ScheduleMonthDay, &ScheduleMonthDay::date> {
    Q_OBJECT

public:
    explicit NativeScheduleMonthModel(QObject *parent = nullptr);
};
