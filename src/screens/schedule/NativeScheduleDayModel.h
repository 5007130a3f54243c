#pragma once

#include "screens/schedule/ScheduleDay.h"
#include "shell/NativeKeyedListModel.h"

// The shown week's seven days, each with its events.
class NativeScheduleDayModel : public NativeKeyedListModel<ScheduleDay, &ScheduleDay::date> {
    Q_OBJECT

public:
    explicit NativeScheduleDayModel(QObject *parent = nullptr);
};
