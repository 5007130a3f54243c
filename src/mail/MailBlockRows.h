#pragma once

#include "mail/MailBlockRow.h"
#include "mail/TarnMailBlock.h"

#include <QList>

// A message's blocks as the flat rows its delegates draw, one delegate per
// kind; nesting (quotes, list items, signatures) becomes depth and flags.
namespace MailBlockRows {

[[nodiscard]] QList<MailBlockRow> rows(const QList<TarnMailBlock> &blocks);
// Runs as styled text: escaped, emphasis as tags, links as anchors whose
// href is the run's vetted link.
[[nodiscard]] QString richText(const QList<TarnMailRun> &runs);

} // namespace MailBlockRows
