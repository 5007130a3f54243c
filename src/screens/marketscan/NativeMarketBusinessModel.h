#pragma once

#include "screens/marketscan/TarnMarketBusiness.h"
#include "shell/NativeKeyedListModel.h"

// The open scan's businesses as narrowed and ordered.
class NativeMarketBusinessModel : public NativeKeyedListModel<TarnMarketBusiness, &TarnMarketBusiness::id> {
    Q_OBJECT

public:
    explicit NativeMarketBusinessModel(QObject *parent = nullptr);
};
