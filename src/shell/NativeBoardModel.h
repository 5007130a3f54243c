#pragma once

#include "shell/NativeKeyedListModel.h"
#include "shell/TarnBoardGroup.h"

class TarnNavigation;

// Board tiles for QML: a tile with a place opens it through the model.
// Its owner fills it with setRows().
class NativeBoardModel : public NativeKeyedListModel<TarnBoardGroup> {
    Q_OBJECT

public:
    explicit NativeBoardModel(TarnNavigation &navigation);

    // Opens the place of the tile at `row`; false for a tile with none.
    Q_INVOKABLE bool open(int row);

private:
    TarnNavigation &m_navigation;
};
