#pragma once

#include "screens/workplan/TarnCoachNote.h"
#include "shell/NativeKeyedListModel.h"

// The coaching notes on the chosen person's week, oldest first.
class NativeCoachNoteModel : public NativeKeyedListModel<TarnCoachNote, &TarnCoachNote::id> {
    Q_OBJECT

public:
    explicit NativeCoachNoteModel(QObject *parent = nullptr);
};
