#pragma once

class WorkspaceServer;

// The work plan ("Sales"): the team's planned week, completing entries,
// admin tasks, reminders and coaching notes. See workspace/README.md for
// paths, bodies and answers.
namespace WorkPlanRoutes {

void add(WorkspaceServer &server);

} // namespace WorkPlanRoutes
