#pragma once

#include "mail/TarnMailBlock.h"

#include <QList>
#include <QString>
#include <QUrl>

// A mail body as the mail views draw it.
struct TarnMailDocument {
    QList<TarnMailBlock> blocks; // the new part of the message
    QList<TarnMailBlock> quoted; // earlier history, hidden behind "Show quoted text"
    int blockedTrackers = 0; // tracking images dropped
    bool truncated = false; // a limit was hit

    // Content ids of every cid image, blocks then quoted, in document order.
    [[nodiscard]] QStringList cidReferences() const;
    // Every remote image URL, in the same order.
    [[nodiscard]] QList<QUrl> remoteImageURLs() const;

    friend bool operator==(const TarnMailDocument &, const TarnMailDocument &) = default;
};
