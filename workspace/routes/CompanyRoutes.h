#pragma once

class WorkspaceServer;

// The company screen: the signed-in person's name, the team and what each
// may open (owners), the handbook ("Docs") and the thought board
// ("Overview"). See workspace/README.md for paths, bodies and answers.
namespace CompanyRoutes {

void add(WorkspaceServer &server);

} // namespace CompanyRoutes
