#pragma once

#include "screens/documents/TarnDocument.h"
#include "screens/documents/TarnEnvelope.h"
#include "screens/documents/TarnEnvelopeDraft.h"

#include <QList>
#include <QString>

// The documents screen's rules over its records: which documents a section
// lists, what a search finds, the words for states and the checks a new
// envelope's recipients pass before anything is sent.
namespace DocumentRules {

// "Worksheets", "Agreements" and "Proposals" list one kind each;
// "Envelopes" every document that was put into an envelope.
[[nodiscard]] bool inSection(const TarnDocument &document, const QString &section);
[[nodiscard]] bool matchesSearch(const TarnDocument &document, const QString &search);
// "Draft", "Out for signature", "Signed"…; a document's envelope wins over
// its own status.
[[nodiscard]] QString statusLabel(const TarnDocument &document);
// "1 of 3 signed", "Not sent yet", "Signed by everyone", "Declined by Nia
// Harbor"; an expired link of the signer whose turn it is is said.
[[nodiscard]] QString progressLabel(const TarnEnvelope &envelope);
// Why these recipients cannot be sent to, or empty when they can.
[[nodiscard]] QString recipientsProblem(const QList<TarnEnvelopeRecipient> &recipients);

} // namespace DocumentRules
