#pragma once

#include "mail/MailParseInput.h"
#include "mail/TarnMailDocument.h"

#include <QFuture>

// One message's body to the document the thread draws: the HTML when it
// says anything, else the plain text. Pure and thread-safe, so the views run
// it on a worker thread.
namespace MailParse {

// `full` lifts the limits, for "Show entire message".
[[nodiscard]] TarnMailDocument document(const MailParseInput &input, bool full);
// The same on the thread pool; the future has the document when it is done.
[[nodiscard]] QFuture<TarnMailDocument> documentOnPool(const MailParseInput &input, bool full);
// Whether the HTML part is used (it holds more than whitespace).
[[nodiscard]] bool usesHTML(const MailParseInput &input);

} // namespace MailParse
