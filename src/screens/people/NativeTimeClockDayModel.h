#pragma once

#include "screens/people/TimeClockDay.h"
#include "shell/NativeKeyedListModel.h"

// The shown week's seven days, Monday first, with their hours.
class NativeTimeClockDayModel : public NativeKeyedListModel<TimeClockDay, &TimeClockDay::date> {
    Q_OBJECT

public:
    explicit NativeTimeClockDayModel(QObject *parent = nullptr);
};
