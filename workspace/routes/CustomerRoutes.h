#pragma once

#include <QString>

class WorkspaceServer;

// The customer register under "/api/crm360", "/api/clients", "/api/records"
// and "/api/sales" (see workspace/README.md for the paths and keys).
namespace CustomerRoutes {

// Makes the register's tables, plants the demo register when it has no
// profiles, and registers the routes.
[[nodiscard]] bool add(WorkspaceServer &server, QString *error);

} // namespace CustomerRoutes
