#pragma once

#include <QStringList>

// tarn sign-out [--workspace URL] [--workspace-ca FILE]
// Signs out exactly as the app does: the service ends the session and the
// stored token is forgotten, also when the service cannot be reached.
int runSignOut(const QStringList &args);
