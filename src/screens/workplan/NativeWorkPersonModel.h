#pragma once

#include "screens/workplan/WorkPlanProgress.h"
#include "shell/NativeKeyedListModel.h"

// The team in the shown week, each with how much of their plan is done.
class NativeWorkPersonModel : public NativeKeyedListModel<WorkPlanProgress, &WorkPlanProgress::id> {
    Q_OBJECT

public:
    explicit NativeWorkPersonModel(QObject *parent = nullptr);
};
