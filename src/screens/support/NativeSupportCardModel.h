#pragma once

#include "screens/support/SupportCard.h"
#include "shell/NativeKeyedListModel.h"

// One column's cards (or a task's subtasks, or a customer's tasks), by the
// task's id.
class NativeSupportCardModel : public NativeKeyedListModel<SupportCard, &supportCardKey> {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    explicit NativeSupportCardModel(QObject *parent = nullptr);

    [[nodiscard]] int count() const { return rowCount(); }

Q_SIGNALS:
    void countChanged();
};
