#pragma once

class WorkspaceServer;

// Connecting a Google-backed service: the app asks for a start address
// ("POST /api/native/google/start"), the browser opens it and confirms, and
// the page hands back to the app through "pilo-tarn://google-connected".
namespace GoogleRoutes {

void add(WorkspaceServer &server);

} // namespace GoogleRoutes
