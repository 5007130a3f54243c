#pragma once

#include "screens/overview/TarnTeamActivity.h"
#include "shell/NativeKeyedListModel.h"

// The team as it is now, in the company's order.
class NativeTeamActivityModel : public NativeKeyedListModel<TarnTeamActivity, &TarnTeamActivity::id> {
    Q_OBJECT

public:
    explicit NativeTeamActivityModel(QObject *parent = nullptr);
};
