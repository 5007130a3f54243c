#pragma once

class WorkspaceServer;

// The web sign-in that stands in for Google ("/api/mobile/start", a page of the
// demo people) and the proof-key code exchange ("/api/mobile/exchange").
namespace SignInRoutes {

void add(WorkspaceServer &server);

} // namespace SignInRoutes
