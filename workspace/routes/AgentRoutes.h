#pragma once

class WorkspaceServer;

// The assistant's agent requests under "/api/agent-requests", worked by the
// service's own WorkspaceAgent.
namespace AgentRoutes {

void add(WorkspaceServer &server);

} // namespace AgentRoutes
