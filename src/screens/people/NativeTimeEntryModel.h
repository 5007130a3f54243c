#pragma once

#include "screens/people/TarnTimeEntry.h"
#include "shell/NativeKeyedListModel.h"

// The shown week's time-clock entries, oldest first: local times, their
// hours so far, and the last correction with its reason.
class NativeTimeEntryModel : public NativeKeyedListModel<TarnTimeEntry, &TarnTimeEntry::id> {
    Q_OBJECT

public:
    explicit NativeTimeEntryModel(QObject *parent = nullptr);
};
