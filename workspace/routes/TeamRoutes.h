#pragma once

class WorkspaceServer;

// The signed-in person's own settings under "/api/team/me/": their other
// sessions and their appearance (accent, text size, background).
namespace TeamRoutes {

void add(WorkspaceServer &server);

} // namespace TeamRoutes
