#pragma once

#include "screens/support/TarnSupportBoard.h"
#include "screens/support/TarnSupportClient.h"
#include "screens/support/TarnSupportFilters.h"
#include "screens/support/TarnSupportRequests.h"
#include "screens/support/TarnSupportTask.h"
#include "screens/support/TarnSupportTaskUpdate.h"
#include "screens/support/TarnSupportTimerState.h"
#include "service/TarnCreatedID.h"
#include "service/TarnOK.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>

class TarnAPI;

// The support board's endpoints under "/api/support". Every id is escaped
// by TarnPath. A change of a task carries the version it was made on; a
// stale one is refused with the task's state now in the message.
namespace TarnSupportCalls {

QCoro::Task<TarnSupportBoard> supportBoard(TarnAPI &api);
QCoro::Task<TarnSupportTask> supportTask(TarnAPI &api, const QString &id);
QCoro::Task<TarnCreatedID> createSupportTask(TarnAPI &api, const TarnSupportTaskDraft &draft);
QCoro::Task<TarnSupportTaskSummary> updateSupportTask(
    TarnAPI &api, const QString &id, const TarnSupportTaskUpdate &update);
QCoro::Task<TarnCreatedID> createSupportSubtask(TarnAPI &api, const QString &task, const QString &title);
QCoro::Task<TarnCreatedID> addSupportTaskComment(TarnAPI &api, const QString &task, const QString &body);
// `upload.data` is base64; SupportBoardRules::fileRefusal is asked first.
QCoro::Task<TarnCreatedID> attachSupportFile(TarnAPI &api, const QString &task, const TarnSupportUpload &upload);
QCoro::Task<QByteArray> downloadSupportFile(TarnAPI &api, const QString &file);
// `action` is "start" or "stop".
QCoro::Task<TarnSupportTimerState> trackSupportTime(TarnAPI &api, const QString &task, const QString &action);
QCoro::Task<TarnCreatedID> logSupportTime(TarnAPI &api, const QString &task, const TarnSupportTimeLog &log);
QCoro::Task<TarnCreatedID> addSupportRecurring(TarnAPI &api, const TarnSupportRecurringDraft &draft);
QCoro::Task<TarnOK> stopSupportRecurring(TarnAPI &api, const QString &id);
QCoro::Task<TarnSupportClient> supportClient(TarnAPI &api, const QString &client);
QCoro::Task<TarnCreatedID> addSupportClientNote(TarnAPI &api, const QString &client, const QString &body);
QCoro::Task<TarnCreatedID> saveSupportView(TarnAPI &api, const TarnSupportViewDraft &view);
QCoro::Task<TarnOK> renameSupportView(TarnAPI &api, const QString &id, const QString &name);
QCoro::Task<TarnOK> deleteSupportView(TarnAPI &api, const QString &id);

} // namespace TarnSupportCalls
