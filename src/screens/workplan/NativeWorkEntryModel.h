#pragma once

#include "screens/workplan/WorkPlanRow.h"
#include "shell/NativeKeyedListModel.h"

// The shown week's entries, by day; `day` is the section delegates group by.
class NativeWorkEntryModel : public NativeKeyedListModel<WorkPlanRow, &WorkPlanRow::id> {
    Q_OBJECT

public:
    explicit NativeWorkEntryModel(QObject *parent = nullptr);
};
