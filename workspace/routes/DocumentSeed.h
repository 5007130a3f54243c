#pragma once

class DocumentStore;
class QSqlDatabase;

// The demo's documents: worksheets to start from, agreements and proposals
// with the demo's customers, and envelopes in each state (a draft ready to
// send, one out with its second signer's turn, some completed, one declined).
namespace DocumentSeed {

void plant(DocumentStore &documents, QSqlDatabase db);

} // namespace DocumentSeed
