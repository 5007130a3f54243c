#pragma once

#include "screens/company/TarnSop.h"
#include "shell/NativeKeyedListModel.h"

// The handbook's pages by category, then title.
class NativeSopModel : public NativeKeyedListModel<TarnSop, &TarnSop::id> {
    Q_OBJECT

public:
    explicit NativeSopModel(QObject *parent = nullptr);
};
