#pragma once

class WorkspaceServer;

// The signed-in session: "/api/session" (the person and their settings) and
// "/api/logout".
namespace SessionRoutes {

void add(WorkspaceServer &server);

} // namespace SessionRoutes
