#pragma once

#include <QString>

class WorkspaceServer;

// The mail service: "POST /api/tarn-mail/rpc" carrying {"method","params"},
// "GET /api/tarn-mail/status" and the signed image proxy
// "GET /api/tarn-mail/img?u=…&e=…&s=…"; with "--test-faults" also
// "POST /api/test/mail/due" and "POST /api/test/mail/sign".
namespace MailRoutes {

// Creates the mail tables (planting the demo mailboxes when there are none)
// and registers the routes; false with *error when the store refused.
[[nodiscard]] bool add(WorkspaceServer &server, QString *error);

} // namespace MailRoutes
