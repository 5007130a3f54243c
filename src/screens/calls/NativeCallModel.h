#pragma once

#include "screens/calls/TarnCall.h"
#include "shell/NativeKeyedListModel.h"

// Calls as the book and the recordings list draw them: who, by whom, when,
// how long, the outcome and notes as they stand, and the `version` an edit
// of a cell is based on.
class NativeCallModel : public NativeKeyedListModel<TarnCall, &TarnCall::id> {
    Q_OBJECT

public:
    explicit NativeCallModel(QObject *parent = nullptr);

    // The call with this id, or nullptr.
    [[nodiscard]] const TarnCall *find(const QString &id) const;
};
