#pragma once

class CallStore;
class QSqlDatabase;

// The demo's call book: a dozen sales leads (customers on the "leads" board
// with their lead details) and about sixty calls over the last three weeks
// with the demo's customers and leads, in and out, answered, missed and to
// voicemail, most answered ones recorded.
namespace CallSeed {

void plant(CallStore &calls, QSqlDatabase db);

} // namespace CallSeed
