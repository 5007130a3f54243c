#pragma once

#include "screens/marketscan/TarnMarketScan.h"
#include "shell/NativeKeyedListModel.h"

// The recent scans, newest first.
class NativeMarketScanModel : public NativeKeyedListModel<TarnMarketScan, &TarnMarketScan::id> {
    Q_OBJECT

public:
    explicit NativeMarketScanModel(QObject *parent = nullptr);
};
