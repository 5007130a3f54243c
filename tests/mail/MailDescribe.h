#pragma once

#include "mail/TarnMailBlock.h"
#include "mail/TarnMailDocument.h"

#include <QList>
#include <QString>

// A compact, readable rendering of blocks, so that a table row can state the
// whole expected structure on one line:
//   P(text)  H2(text)  UL{item|item}  OL-3{…}  Q{…}  PRE(text)  SIG{…}  HR
//   T2{a,b/c,d} (2 header rows)  IMG(alt remote:url 10x20 ->link)
// Styled runs read [bi:text] (b i u s c), linked runs [->url:text], a newline \n.
namespace MailDescribe {

[[nodiscard]] QString blocks(const QList<TarnMailBlock> &blocks);
[[nodiscard]] QString runs(const QList<TarnMailRun> &runs);
// "blocks" alone, or "blocks || quoted" when there is history.
[[nodiscard]] QString document(const TarnMailDocument &document);

} // namespace MailDescribe
