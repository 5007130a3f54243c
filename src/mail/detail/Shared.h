#pragma once

#include "mail/TarnMailBlock.h"

#include <QList>

namespace TarnMailHTML::detail {

// The limits and counters all builders of one parse share.
struct Shared {
    int characterLimit = 0;
    int blockLimit = 0;
    int characters = 0; // text characters emitted so far
    int blockCount = 0;
    bool truncated = false; // a limit was hit: nothing further is read
    bool blocksFull = false; // the block limit was hit: nothing further is emitted
    int trackers = 0;
    QList<TarnMailBlock> quoted;
    bool foldRest = false; // every further root block goes to `quoted`
    int quoteDepth = 0;
};

} // namespace TarnMailHTML::detail
