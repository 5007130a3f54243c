#pragma once

#include "mail/TarnMailPerson.h"

#include <QString>

class TarnJSONObject;

// A reply the assistant prepared for a message, waiting to be sent, skipped
// or written again on an instruction.
struct TarnMailReplyDraft {
    QString id;
    QString threadId;
    QString messageId;
    TarnMailPerson from;
    QString subject;
    QString preview;
    QString draft;
    QString status;
    qint64 createdMs = 0;

    static TarnMailReplyDraft fromJSON(const TarnJSONObject &json);
};
