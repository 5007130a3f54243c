#pragma once

#include "screens/owner/TarnTeamWeek.h"
#include "shell/NativeKeyedListModel.h"

// The team's week, one row per person in the company's order.
class NativeTeamWeekModel : public NativeKeyedListModel<TarnTeamWeek, &TarnTeamWeek::id> {
    Q_OBJECT

public:
    explicit NativeTeamWeekModel(QObject *parent = nullptr);
};
