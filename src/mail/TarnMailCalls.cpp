#include "mail/TarnMailCalls.h"

#include "mail/TarnMailRPC.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

using namespace Qt::StringLiterals;

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
    return rpc<TarnMailInbox>(api, TarnMailRPC::inbox(view, cursor));
}

QCoro::Task<TarnMailInbox> search(TarnAPI &api, const QString &query)
{
    return rpc<TarnMailInbox>(api, TarnMailRPC::search(query));
}

QCoro::Task<TarnMailThreadResponse> thread(TarnAPI &api, const QString &id)
{
    return rpc<TarnMailThreadResponse>(api, TarnMailRPC::thread(id));
}

QCoro::Task<TarnMailDownloadedFile> attachment(
    TarnAPI &api, const QString &threadId, const QString &messageId, const QString &attachmentId)
{
    return rpc<TarnMailDownloadedFile>(api, TarnMailRPC::attachment(threadId, messageId, attachmentId));
}

QCoro::Task<TarnMailQueued> send(TarnAPI &api, TarnMailSend mail)
{
    if (!TarnMailSend::attachmentsFit(mail.attachments))
        throw TarnAPIError::server(QString(attachmentLimitText));
    TarnMailRPC body = TarnMailRPC::send(mail);
    QCoro::Task<TarnMailQueued> queued = rpc<TarnMailQueued>(api, std::move(body));
    co_return co_await std::move(queued);
}

QCoro::Task<TarnMailCancelled> cancelSend(TarnAPI &api, const QString &sendId)
{
    return rpc<TarnMailCancelled>(api, TarnMailRPC::cancelSend(sendId));
}

QCoro::Task<TarnMailLabels> labels(TarnAPI &api)
{
    return rpc<TarnMailLabels>(api, TarnMailRPC::labels());
}

QCoro::Task<TarnMailAccounts> accounts(TarnAPI &api)
{
    return rpc<TarnMailAccounts>(api, TarnMailRPC::accounts());
}

QCoro::Task<TarnMailReplyDrafts> replyDrafts(TarnAPI &api)
{
    return rpc<TarnMailReplyDrafts>(api, TarnMailRPC::drafts());
}

QCoro::Task<TarnMailOKReply> actOnReplyDraft(TarnAPI &api, const QString &id, bool skip, const QString &instruction)
{
    return rpc<TarnMailOKReply>(api, TarnMailRPC::actOnDraft(id, skip, instruction));
}

QCoro::Task<TarnMailSignedImages> signImages(TarnAPI &api, const QStringList &urls)
{
    return rpc<TarnMailSignedImages>(api, TarnMailRPC::signImages(urls));
}

QCoro::Task<TarnMailOK> perform(TarnAPI &api, const TarnMailAction &action, const QString &threadId)
{
    return rpc<TarnMailOK>(api, action.rpc(threadId));
}

QCoro::Task<QByteArray> proxyImage(TarnAPI &api, const QString &path)
{
    return api.downloadFile(TarnPath(path), maxImageBytes);
}

} // namespace TarnMailCalls
