#pragma once

#include <QString>

class WorkspaceServer;

// The chat endpoints under "/api/rooms" and "/api/team", and
// with "--test-faults" "POST /api/test/rooms/:room/messages", which posts as
// another person.
namespace ChatRoutes {

// Creates the chat tables (planting the demo chat when there are no rooms)
// and registers the routes; false with *error when the store refused.
[[nodiscard]] bool add(WorkspaceServer &server, QString *error);

} // namespace ChatRoutes
