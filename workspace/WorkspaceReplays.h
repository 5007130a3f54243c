#pragma once

#include "workspace/WorkspaceReply.h"

#include <QByteArray>
#include <QString>

#include <deque>
#include <optional>

// The answers to recent changes that carried an "Idempotency-Key". A change
// sent twice under one key (the network layer resends a request whose
// connection closed before the answer; the app retries a lost answer) is
// carried out once: the second gets the first one's answer. A key belongs to
// one session and one method and path, so a key reused elsewhere is a new
// change.
class WorkspaceReplays {
public:
    struct Key {
        qint64 session = 0;
        QByteArray idempotencyKey;
        QByteArray method;
        QString path;
        friend bool operator==(const Key &, const Key &) = default;
    };

    [[nodiscard]] std::optional<WorkspaceReply> answerTo(const Key &key, qint64 nowMs);
    // Answers the service could not give (5xx) are not kept: a resend may fare better.
    void remember(Key key, const WorkspaceReply &reply, qint64 nowMs);

private:
    struct Kept {
        Key key;
        WorkspaceReply reply;
        qint64 atMs = 0;
    };
    void forgetOlderThan(qint64 nowMs);

    std::deque<Kept> m_kept; // oldest first
};
