#pragma once

class WorkspaceServer;

// The clients' websites under "/api/websites", and site checks. Open to those
// with the "Website" app.
namespace WebsiteRoutes {

void add(WorkspaceServer &server);

} // namespace WebsiteRoutes
