#pragma once

class CompanyStore;
class QSqlDatabase;

// The demo's handbook (a dozen SOPs in a few categories, written by the
// owner and the leads) and thought board (ideas from around the team, some
// decided, some waiting, some already read by the owner).
namespace CompanySeed {

void plant(CompanyStore &company, QSqlDatabase db);

} // namespace CompanySeed
