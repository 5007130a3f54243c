#pragma once

#include "screens/overview/TarnProductBoard.h"
#include "shell/NativeKeyedListModel.h"

// The work in one stage of the chosen product board.
class NativeBoardItemModel : public NativeKeyedListModel<TarnBoardItem, &TarnBoardItem::id> {
    Q_OBJECT

public:
    explicit NativeBoardItemModel(QObject *parent = nullptr);
};
