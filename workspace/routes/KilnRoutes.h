#pragma once

class WorkspaceServer;

// The web workspace: "/api/kiln/handoff" gives a signed-in person with the
// "Kiln" app a one-time code, and "/kiln" spends it, once and within a
// minute, on a small page standing in for the web workspace. Codes are kept
// only as their SHA-256.
namespace KilnRoutes {

void add(WorkspaceServer &server);

} // namespace KilnRoutes
