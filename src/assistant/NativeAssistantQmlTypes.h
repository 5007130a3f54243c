#pragma once

#include "assistant/NativePiloReview.h"
#include "assistant/TarnPiloConversation.h"

#include <QtQml/qqml.h>

// The assistant's state objects as QML sees them; the window builds them.
struct TarnPiloConversationForeign {
    Q_GADGET
    QML_FOREIGN(TarnPiloConversation)
    QML_NAMED_ELEMENT(TarnPiloConversation)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeAgentRequestModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeAgentRequestModel)
    QML_NAMED_ELEMENT(NativeAgentRequestModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativePiloReviewForeign {
    Q_GADGET
    QML_FOREIGN(NativePiloReview)
    QML_NAMED_ELEMENT(NativePiloReview)
    QML_UNCREATABLE("Built by the application.")
};
