#pragma once

#include "mail/TarnMailAccounts.h"
#include "mail/TarnMailAction.h"
#include "mail/TarnMailCancelled.h"
#include "mail/TarnMailConnectStart.h"
#include "mail/TarnMailDownloadedFile.h"
#include "mail/TarnMailInbox.h"
#include "mail/TarnMailLabels.h"
#include "mail/TarnMailOK.h"
#include "mail/TarnMailQueued.h"
#include "mail/TarnMailRPC.h"
#include "mail/TarnMailReplyDrafts.h"
#include "mail/TarnMailSend.h"
#include "mail/TarnMailSignedImages.h"
#include "mail/TarnMailStatus.h"
#include "mail/TarnMailThreadResponse.h"
#include "service/TarnAPI.h"

#include <QByteArray>
#include <QCoroTask>
#include <QString>
#include <QStringList>

#include <optional>

// The mail service: one RPC endpoint ("/api/tarn-mail/rpc") carrying a method
// and its params, the connection status and the image proxy.
namespace TarnMailCalls {

// What a refused set of attachments shows; nothing is sent then.
inline constexpr QLatin1StringView attachmentLimitText = QLatin1StringView("Attach up to 20 files totaling 18 MB.");
// The largest image the proxy may hand back.
inline constexpr qint64 maxImageBytes = 10 * 1024 * 1024;

// One call to the RPC endpoint, answered by the record `T`; the screens
// that use the service's calendar methods call it too.
template <typename T> QCoro::Task<T> rpc(TarnAPI &api, TarnMailRPC body)
{
    return api.request<T>(TarnPath(QStringLiteral("/api/tarn-mail/rpc")), TarnMethod::Post, std::move(body));
}

QCoro::Task<TarnMailStatus> status(TarnAPI &api);
// The address the browser opens to connect the mailbox ("gmail") with Google.
QCoro::Task<TarnMailConnectStart> connectStart(TarnAPI &api);
QCoro::Task<TarnMailInbox> inbox(TarnAPI &api, const QString &view, const std::optional<QString> &cursor = {});
QCoro::Task<TarnMailInbox> search(TarnAPI &api, const QString &query);
QCoro::Task<TarnMailThreadResponse> thread(TarnAPI &api, const QString &id);
QCoro::Task<TarnMailDownloadedFile> attachment(
    TarnAPI &api, const QString &threadId, const QString &messageId, const QString &attachmentId);
// Refused here with attachmentLimitText, before anything is sent, when the
// files do not fit.
QCoro::Task<TarnMailQueued> send(TarnAPI &api, TarnMailSend mail);
QCoro::Task<TarnMailCancelled> cancelSend(TarnAPI &api, const QString &sendId);
QCoro::Task<TarnMailLabels> labels(TarnAPI &api);
QCoro::Task<TarnMailAccounts> accounts(TarnAPI &api);
QCoro::Task<TarnMailReplyDrafts> replyDrafts(TarnAPI &api);
QCoro::Task<TarnMailOKReply> actOnReplyDraft(TarnAPI &api, const QString &id, bool skip, const QString &instruction);
QCoro::Task<TarnMailSignedImages> signImages(TarnAPI &api, const QStringList &urls);
QCoro::Task<TarnMailOK> perform(TarnAPI &api, const TarnMailAction &action, const QString &threadId);
// The bytes of one image; `path` is one of TarnMailProxy::proxyPaths.
QCoro::Task<QByteArray> proxyImage(TarnAPI &api, const QString &path);

} // namespace TarnMailCalls
