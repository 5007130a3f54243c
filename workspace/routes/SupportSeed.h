#pragma once

class SupportStore;
class QSqlDatabase;

// The demo company's support board: about forty tasks across the statuses,
// customers and people, some overdue, with subtasks, comments and logged
// time; recurring maintenance; the owner's timer running on one task; notes
// on a few customers and one saved view.
namespace SupportSeed {

void plant(SupportStore &support, QSqlDatabase db);

} // namespace SupportSeed
