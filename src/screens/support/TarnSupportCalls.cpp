#include "screens/support/TarnSupportCalls.h"

#include "screens/support/SupportBoardRules.h"
#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace {

TarnPath taskPath(const QString &id)
{
    return TarnPath(u"/api/support/tasks"_s).id(id);
}

} // namespace

namespace TarnSupportCalls {

QCoro::Task<TarnSupportBoard> supportBoard(TarnAPI &api)
{
    return api.request<TarnSupportBoard>(TarnPath(u"/api/support/board"_s));
}

QCoro::Task<TarnSupportTask> supportTask(TarnAPI &api, const QString &id)
{
    return api.request<TarnSupportTask>(taskPath(id));
}

QCoro::Task<TarnCreatedID> createSupportTask(TarnAPI &api, const TarnSupportTaskDraft &draft)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/support/tasks"_s), TarnMethod::Post, draft);
}

QCoro::Task<TarnSupportTaskSummary> updateSupportTask(
    TarnAPI &api, const QString &id, const TarnSupportTaskUpdate &update)
{
    return api.request<TarnSupportTaskSummary>(taskPath(id), TarnMethod::Patch, update);
}

QCoro::Task<TarnCreatedID> createSupportSubtask(TarnAPI &api, const QString &task, const QString &title)
{
    return api.request<TarnCreatedID>(
        taskPath(task).segment("subtasks"_L1), TarnMethod::Post, TarnSupportSubtaskDraft { title });
}

QCoro::Task<TarnCreatedID> addSupportTaskComment(TarnAPI &api, const QString &task, const QString &body)
{
    return api.request<TarnCreatedID>(
        taskPath(task).segment("comments"_L1), TarnMethod::Post, TarnSupportNoteDraft { body });
}

QCoro::Task<TarnCreatedID> attachSupportFile(TarnAPI &api, const QString &task, const TarnSupportUpload &upload)
{
    return api.request<TarnCreatedID>(taskPath(task).segment("files"_L1), TarnMethod::Post, upload);
}

QCoro::Task<QByteArray> downloadSupportFile(TarnAPI &api, const QString &file)
{
    return api.downloadFile(TarnPath(u"/api/support/files"_s).id(file), SupportBoardRules::fileLimit);
}

QCoro::Task<TarnSupportTimerState> trackSupportTime(TarnAPI &api, const QString &task, const QString &action)
{
    return api.request<TarnSupportTimerState>(
        taskPath(task).segment("timer"_L1), TarnMethod::Post, TarnSupportTimerAction { action });
}

QCoro::Task<TarnCreatedID> logSupportTime(TarnAPI &api, const QString &task, const TarnSupportTimeLog &log)
{
    return api.request<TarnCreatedID>(taskPath(task).segment("time"_L1), TarnMethod::Post, log);
}

QCoro::Task<TarnCreatedID> addSupportRecurring(TarnAPI &api, const TarnSupportRecurringDraft &draft)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/support/recurring"_s), TarnMethod::Post, draft);
}

QCoro::Task<TarnOK> stopSupportRecurring(TarnAPI &api, const QString &id)
{
    return api.request<TarnOK>(TarnPath(u"/api/support/recurring"_s).id(id).segment("stop"_L1), TarnMethod::Post);
}

QCoro::Task<TarnSupportClient> supportClient(TarnAPI &api, const QString &client)
{
    return api.request<TarnSupportClient>(TarnPath(u"/api/support/clients"_s).id(client));
}

QCoro::Task<TarnCreatedID> addSupportClientNote(TarnAPI &api, const QString &client, const QString &body)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/support/clients"_s).id(client).segment("notes"_L1),
        TarnMethod::Post, TarnSupportNoteDraft { body });
}

QCoro::Task<TarnCreatedID> saveSupportView(TarnAPI &api, const TarnSupportViewDraft &view)
{
    return api.request<TarnCreatedID>(TarnPath(u"/api/support/views"_s), TarnMethod::Post, view);
}

QCoro::Task<TarnOK> renameSupportView(TarnAPI &api, const QString &id, const QString &name)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/support/views"_s).id(id), TarnMethod::Patch, TarnSupportViewName { name });
}

QCoro::Task<TarnOK> deleteSupportView(TarnAPI &api, const QString &id)
{
    return api.request<TarnOK>(TarnPath(u"/api/support/views"_s).id(id), TarnMethod::Delete);
}

} // namespace TarnSupportCalls
