#pragma once

#include "screens/documents/TarnDocument.h"
#include "screens/documents/TarnEnvelope.h"
#include "screens/documents/TarnEnvelopeDraft.h"

#include <QCoroTask>
#include <QList>
#include <QString>

class TarnAPI;

// The documents screen's endpoints: documents by kind and their envelopes.
namespace TarnDocumentCalls {

// `kind` is "worksheet", "agreement" or "proposal"; empty for every kind.
QCoro::Task<QList<TarnDocument>> legacyDocuments(TarnAPI &api, const QString &kind);
QCoro::Task<TarnEnvelope> envelope(TarnAPI &api, const QString &id);
// Makes the signing copy of a document: a new envelope in "draft".
QCoro::Task<TarnEnvelope> googleSignatureDoc(TarnAPI &api, const TarnEnvelopeDraft &draft);
// Sending an envelope that already went out answers it as it is, unless the
// signing link of the signer whose turn it is expired: they get a new one.
QCoro::Task<TarnEnvelope> sendEnvelope(TarnAPI &api, const QString &id);
// The document's pages as a PDF, at most 20 MiB.
QCoro::Task<QByteArray> documentPdf(TarnAPI &api, const QString &id);

} // namespace TarnDocumentCalls
