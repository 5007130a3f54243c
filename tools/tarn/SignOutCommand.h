#pragma once

class CommandLine;

// tarn sign-out [--workspace URL] [--workspace-ca FILE]
// Signs out exactly as the app does: the service ends the session and the
// stored token is forgotten, also when the service cannot be reached. Says
// whether a session was removed.
[[nodiscard]] int runSignOut(CommandLine &line);
