#pragma once

class InboxStore;
class QSqlDatabase;

// The demo company's customers and a dozen inbox threads over the last
// week, in every state: waiting, answered, assigned, unassigned, snoozed
// (one already due), done, with a draft, from an unknown sender and from a
// web form that cannot be answered.
namespace InboxSeed {

void plant(InboxStore &inbox, QSqlDatabase db);

} // namespace InboxSeed
