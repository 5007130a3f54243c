#pragma once

#include "screens/support/TarnSupportComment.h"
#include "shell/NativeKeyedListModel.h"

// A task's comments or a customer's notes, oldest first.
class NativeSupportNoteModel : public NativeKeyedListModel<TarnSupportComment, &TarnSupportComment::id> {
    Q_OBJECT

public:
    explicit NativeSupportNoteModel(QObject *parent = nullptr);
};
