#pragma once

#include <memory>

class DocumentStore;
class WorkspaceServer;

// The signing page a signer reaches by their link, outside "/api/" and
// without a session: "GET /sign/:token" shows the document and the form,
// "POST /sign/:token" signs or declines, "GET /sign/:token/pdf" downloads the
// document. A link that cannot be used (spent, superseded, expired, unknown)
// shows a plain page that says so and nothing of the envelope. With test
// faults, "POST /api/test/envelopes/:id/expire-link" ages the live link.
namespace SigningRoutes {

void add(WorkspaceServer &server, const std::shared_ptr<DocumentStore> &documents);

} // namespace SigningRoutes
