#pragma once

#include <QString>

class WorkspaceServer;

// The huddle endpoints under "/api/rooms/:room/huddle/" (join, leave, state,
// signal, poll) and "GET /api/huddles", over an in-memory HuddleHub. Rooms
// and who may see them come from the chat tables, so it is added after the
// chat routes.
namespace HuddleRoutes {

void add(WorkspaceServer &server);

} // namespace HuddleRoutes
