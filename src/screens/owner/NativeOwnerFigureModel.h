#pragma once

#include "screens/owner/OwnerFigure.h"
#include "shell/NativeKeyedListModel.h"

// The dashboard's figures, each with the screen and section it opens.
class NativeOwnerFigureModel : public NativeKeyedListModel<OwnerFigure, &OwnerFigure::key> {
    Q_OBJECT

public:
    explicit NativeOwnerFigureModel(QObject *parent = nullptr);
};
