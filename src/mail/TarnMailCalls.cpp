#include "mail/TarnMailCalls.h"

#include "mail/TarnMailRPC.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

using namespace Qt::StringLiterals;

namespace {

template <typename T> QCoro::Task<T> call(TarnAPI &api, TarnMailRPC rpc)
{
    return api.request<T>(TarnPath(u"/api/tarn-mail/rpc"_s), TarnMethod::Post, std::move(rpc));
}

} // namespace

namespace TarnMailCalls {

QCoro::Task<TarnMailStatus> status(TarnAPI &api)
{
    return api.request<TarnMailStatus>(TarnPath(u"/api/tarn-mail/status"_s));
}

QCoro::Task<TarnMailConnectStart> connectStart(TarnAPI &api)
{
    return api.request<TarnMailConnectStart>(
        TarnPath(u"/api/native/google/start"_s), TarnMethod::Post, TarnMailConnectService { u"gmail"_s });
}

QCoro::Task<TarnMailInbox> inbox(TarnAPI &api, const QString &view, const std::optional<QString> &cursor)
{
    return call<TarnMailInbox>(api, TarnMailRPC::inbox(view, cursor));
}

QCoro::Task<TarnMailInbox> search(TarnAPI &api, const QString &query)
{
    return call<TarnMailInbox>(api, TarnMailRPC::search(query));
}

QCoro::Task<TarnMailThreadResponse> thread(TarnAPI &api, const QString &id)
{
    return call<TarnMailThreadResponse>(api, TarnMailRPC::thread(id));
}

QCoro::Task<TarnMailDownloadedFile> attachment(
    TarnAPI &api, const QString &threadId, const QString &messageId, const QString &attachmentId)
{
    return call<TarnMailDownloadedFile>(api, TarnMailRPC::attachment(threadId, messageId, attachmentId));
}

QCoro::Task<TarnMailQueued> send(TarnAPI &api, TarnMailSend mail)
{
    if (!TarnMailSend::attachmentsFit(mail.attachments))
        throw TarnAPIError::server(QString(attachmentLimitText));
    TarnMailRPC rpc = TarnMailRPC::send(mail);
    QCoro::Task<TarnMailQueued> queued = call<TarnMailQueued>(api, std::move(rpc));
    co_return co_await std::move(queued);
}

QCoro::Task<TarnMailCancelled> cancelSend(TarnAPI &api, const QString &sendId)
{
    return call<TarnMailCancelled>(api, TarnMailRPC::cancelSend(sendId));
}

QCoro::Task<TarnMailLabels> labels(TarnAPI &api)
{
    return call<TarnMailLabels>(api, TarnMailRPC::labels());
}

QCoro::Task<TarnMailAccounts> accounts(TarnAPI &api)
{
    return call<TarnMailAccounts>(api, TarnMailRPC::accounts());
}

QCoro::Task<TarnMailReplyDrafts> replyDrafts(TarnAPI &api)
{
    return call<TarnMailReplyDrafts>(api, TarnMailRPC::drafts());
}

QCoro::Task<TarnMailOKReply> actOnReplyDraft(TarnAPI &api, const QString &id, bool skip, const QString &instruction)
{
    return call<TarnMailOKReply>(api, TarnMailRPC::actOnDraft(id, skip, instruction));
}

QCoro::Task<TarnMailSignedImages> signImages(TarnAPI &api, const QStringList &urls)
{
    return call<TarnMailSignedImages>(api, TarnMailRPC::signImages(urls));
}

QCoro::Task<TarnMailOK> perform(TarnAPI &api, const TarnMailAction &action, const QString &threadId)
{
    return call<TarnMailOK>(api, action.rpc(threadId));
}

QCoro::Task<QByteArray> proxyImage(TarnAPI &api, const QString &path)
{
    return api.downloadFile(TarnPath(path), maxImageBytes);
}

} // namespace TarnMailCalls
