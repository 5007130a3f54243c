#pragma once

#include "workspace/WorkspacePerson.h"

#include <QList>

class WorkspaceStore;

// The demo company "Halvard & Co.", planted in a new database. Client tests
// and demos rely on these people, so changes here are changes to them too.
namespace WorkspaceSeed {

[[nodiscard]] QList<WorkspacePerson> people();
[[nodiscard]] QStringList allApps();
// The id of the company's owner ("--auto-sign-in owner").
[[nodiscard]] QString ownerId();

// Plants the demo company into an empty store; false when the store refused.
[[nodiscard]] bool plant(WorkspaceStore &store);

} // namespace WorkspaceSeed
