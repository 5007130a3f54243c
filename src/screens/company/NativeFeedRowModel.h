#pragma once

#include "money/TarnBooksBank.h"
#include "shell/NativeKeyedListModel.h"

// The newest rows the bank feed brought into the books, newest first.
class NativeFeedRowModel : public NativeKeyedListModel<TarnBooksBankRow, &TarnBooksBankRow::id> {
    Q_OBJECT

public:
    explicit NativeFeedRowModel(QObject *parent = nullptr);
};
