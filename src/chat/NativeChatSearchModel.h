#pragma once

#include "chat/TarnMessageSearchHit.h"
#include "shell/NativeKeyedListModel.h"

// The hits of the search across rooms, newest first.
class NativeChatSearchModel : public NativeKeyedListModel<TarnMessageSearchHit, &TarnMessageSearchHit::id> {
    Q_OBJECT

public:
    explicit NativeChatSearchModel(QObject *parent = nullptr);
};
