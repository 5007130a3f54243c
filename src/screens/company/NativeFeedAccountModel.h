#pragma once

#include "money/TarnBankFeed.h"
#include "shell/NativeKeyedListModel.h"

// The bank accounts connected to the feed: name and mask, the bank's balance
// beside the books', the rows to categorize, the baseline and the last
// reconciliation. Amounts are shown as dollars; an unknown one is empty.
class NativeFeedAccountModel : public NativeKeyedListModel<TarnMercuryAccount, &TarnMercuryAccount::id> {
    Q_OBJECT

public:
    explicit NativeFeedAccountModel(QObject *parent = nullptr);
};
