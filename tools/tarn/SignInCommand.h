#pragma once

class CommandLine;

// tarn sign-in [--workspace URL] [--workspace-ca FILE]
// Signs in exactly as the app does: the browser opens the workspace's
// sign-in page with a proof key, the "pilo-tarn:" address it ends on comes
// back through the app's hand-off (a later start of pilo-tarn, which this
// command stands in for while it waits) or pasted in the terminal, and the
// session goes into the keyring the app reads.
[[nodiscard]] int runSignIn(CommandLine &line);
