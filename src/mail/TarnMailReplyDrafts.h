#pragma once

#include "mail/TarnMailReplyDraft.h"

#include <QList>

class TarnJSONObject;

struct TarnMailReplyDrafts {
    bool enabled = false; // the assistant prepares replies for this mailbox
    QList<TarnMailReplyDraft> drafts;

    static TarnMailReplyDrafts fromJSON(const TarnJSONObject &json);
};
