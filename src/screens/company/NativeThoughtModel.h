#pragma once

#include "screens/company/TarnThoughtPost.h"
#include "shell/NativeKeyedListModel.h"

// The thought board, newest first, with the reader's own read mark and the
// owner's decision.
class NativeThoughtModel : public NativeKeyedListModel<TarnThoughtPost, &TarnThoughtPost::id> {
    Q_OBJECT

public:
    explicit NativeThoughtModel(QObject *parent = nullptr);
};
