#pragma once

#include "assistant/TarnAgentRequest.h"
#include "shell/NativeKeyedListModel.h"

// The requests the assistant panel shows, oldest first, keyed by id. The
// status arrives both raw (for the reviewer) and as its label.
class NativeAgentRequestModel : public NativeKeyedListModel<TarnAgentRequest, &TarnAgentRequest::id> {
    Q_OBJECT
public:
    explicit NativeAgentRequestModel(QObject *parent = nullptr);
};
