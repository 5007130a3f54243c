#include "workspace/routes/MailRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/MailImages.h"
#include "workspace/routes/MailSeed.h"
#include "workspace/routes/MailStore.h"
#include "workspace/routes/ScheduleGoogle.h"
#include "workspace/routes/ScheduleSeed.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QTimer>
#include <QUrl>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Access = WorkspaceRouter::Access;
using Refusal = MailStore::Refusal;

// A queued mail really goes out this long after it was sent.
constexpr qint64 sendDelayMs = 10'000;
constexpr qsizetype maxSignedImages = 500;

template <typename T> WorkspaceReply answer(const MailStore::Result<T> &result)
{
    if (const Refusal *refusal = std::get_if<Refusal>(&result))
        return WorkspaceReply::error(refusal->status, refusal->message);
    if constexpr (std::is_same_v<T, QJsonObject>)
        return WorkspaceReply::json(std::get<QJsonObject>(result));
    else
        return WorkspaceReply::ok();
}

qint64 nowSeconds()
{
    return QDateTime::currentSecsSinceEpoch();
}

QJsonObject signImages(MailStore &mail, const QJsonArray &urls)
{
    const QByteArray secret = mail.imageSecret();
    const qint64 expires = nowSeconds() + MailImages::lifetimeSeconds;
    QJsonObject images;
    for (const QJsonValue &value : urls) {
        const QUrl url(value.toString(), QUrl::StrictMode);
        // Only absolute web addresses; anything else is left unsigned.
        if (url.isValid() && (url.scheme() == "https"_L1 || url.scheme() == "http"_L1) && !url.host().isEmpty())
            images.insert(value.toString(), MailImages::sign(secret, value.toString(), expires));
    }
    return { { u"path"_s, u"/api/tarn-mail/img?"_s }, { u"images"_s, images } };
}

class MailRPC {
public:
    MailRPC(WorkspaceServer &server, std::shared_ptr<MailStore> mail, std::shared_ptr<ScheduleGoogle> calendar)
        : m_server(server)
        , m_mail(std::move(mail))
        , m_calendar(std::move(calendar))
    {
    }

    WorkspaceReply operator()(const WorkspaceRequest &request) const
    {
        const std::optional<QJsonObject> body = request.jsonBody();
        if (!body || !body->value("method"_L1).isString())
            return WorkspaceReply::error(400, u"A mail call is {\"method\", \"params\"}."_s);
        const QString me = request.session().personId;
        if (!m_mail->isConnected(me))
            return WorkspaceReply::error(409, u"Connect your Google mailbox first."_s);
        const QString method = body->value("method"_L1).toString();
        const QJsonObject params = body->value("params"_L1).toObject();
        if (method.startsWith("calendar."_L1))
            return calendar(me, method, params);
        m_mail->deliverDue();
        return call(me, method, params);
    }

private:
    // The connected Google account's calendar, once it was granted.
    WorkspaceReply calendar(const QString &me, const QString &method, const QJsonObject &params) const
    {
        if (!m_calendar->isGranted(me))
            return WorkspaceReply::error(403, u"Google Calendar is not connected."_s);
        if (method == "calendar.events"_L1)
            return m_calendar->events(me, params);
        if (method == "calendar.create"_L1)
            return m_calendar->create(me, params);
        return WorkspaceReply::error(404, u"The mail service has no method \"%1\"."_s.arg(method));
    }

    WorkspaceReply call(const QString &me, const QString &method, const QJsonObject &params) const
    {
        MailStore &mail = *m_mail;
        const auto text = [&params](QLatin1StringView key) { return params.value(key).toString(); };
        const QString thread = text("threadId"_L1);
        if (method == "mail.inbox"_L1) {
            const QJsonValue cursor = params.value("cursor"_L1);
            return answer(mail.view(me, params.value("view"_L1).toString(u"inbox"_s),
                cursor.isString() ? std::optional(cursor.toString()) : std::nullopt));
        }
        if (method == "mail.search"_L1)
            return WorkspaceReply::json(mail.search(me, text("query"_L1)));
        if (method == "mail.thread"_L1)
            return answer(mail.thread(me, text("id"_L1)));
        if (method == "mail.attachment"_L1)
            return answer(mail.attachment(me, thread, text("messageId"_L1), text("attachmentId"_L1)));
        if (method == "mail.send"_L1) {
            const MailStore::Result<QJsonObject> queued = mail.queueSend(me, params, sendDelayMs);
            if (std::holds_alternative<QJsonObject>(queued))
                scheduleDelivery();
            return answer(queued);
        }
        if (method == "mail.cancelSend"_L1)
            return answer(mail.cancelSend(me, text("sendId"_L1)));
        if (method == "mail.labels"_L1)
            return WorkspaceReply::json(mail.labels(me));
        if (method == "mail.accounts"_L1)
            return WorkspaceReply::json(mail.accounts(me));
        if (method == "mail.drafts.list"_L1)
            return WorkspaceReply::json(mail.drafts(me));
        if (method == "mail.drafts.act"_L1)
            return answer(mail.actOnDraft(me, text("id"_L1), text("action"_L1), text("text"_L1)));
        if (method == "mail.images.sign"_L1) {
            const QJsonArray urls = params.value("urls"_L1).toArray();
            if (urls.size() > maxSignedImages)
                return WorkspaceReply::error(400, u"Sign at most 500 images at a time."_s);
            return WorkspaceReply::json(signImages(mail, urls));
        }
        if (method == "mail.modify"_L1)
            return answer(mail.modify(me, thread, text("action"_L1)));
        if (method == "mail.pin"_L1) {
            if (!params.value("pinned"_L1).isBool())
                return WorkspaceReply::error(400, u"\"pinned\" is true or false."_s);
            return answer(mail.pin(me, thread, params.value("pinned"_L1).toBool()));
        }
        if (method == "mail.snooze"_L1) {
            if (!params.value("untilMs"_L1).isDouble())
                return WorkspaceReply::error(400, u"\"untilMs\" is a time in milliseconds."_s);
            return answer(mail.snooze(me, thread, params.value("untilMs"_L1).toInteger()));
        }
        if (method == "mail.label"_L1)
            return answer(mail.label(me, thread, text("labelId"_L1), params.value("applied"_L1).toBool(true)));
        return WorkspaceReply::error(404, u"The mail service has no method \"%1\"."_s.arg(method));
    }

    // The next queued send goes out on time even if nobody asks before.
    void scheduleDelivery() const
    {
        const std::optional<qint64> next = m_mail->deliverDue();
        if (!next)
            return;
        const qint64 wait = qMax<qint64>(0, *next - QDateTime::currentMSecsSinceEpoch());
        QTimer::singleShot(
            std::chrono::milliseconds(wait + 1), Qt::PreciseTimer, &m_server, [mail = m_mail] { mail->deliverDue(); });
    }

    WorkspaceServer &m_server;
    std::shared_ptr<MailStore> m_mail;
    std::shared_ptr<ScheduleGoogle> m_calendar;
};

} // namespace

namespace MailRoutes {

bool add(WorkspaceServer &server, QString *error)
{
    const auto mail = std::make_shared<MailStore>(server.store().database().connectionName());
    if (!mail->createSchema()) {
        *error = u"could not create the mail tables"_s;
        return false;
    }
    // Also a data folder made before there was mail gets the demo mailboxes.
    if (!mail->hasMailboxes()) {
        QSqlDatabase db = server.store().database();
        db.transaction();
        if (!MailSeed::plant(*mail, server.store())) {
            db.rollback();
            *error = u"could not plant the demo mailboxes"_s;
            return false;
        }
        db.commit();
    }
    // Sends queued before a restart go out (or are found due) now.
    mail->deliverDue();
    const auto calendar = std::make_shared<ScheduleGoogle>(server.store());
    if (!calendar->createSchema()) {
        *error = u"could not create the calendar tables"_s;
        return false;
    }
    if (!calendar->hasEvents())
        ScheduleSeed::plantGoogle(*calendar, QDate::currentDate());

    WorkspaceRouter &router = server.router();

    // Connecting "gmail" through the Google flow connects the mailbox, and
    // "calendar" grants its calendar.
    router.add(
        "GET", u"/api/tarn-mail/status"_s, Access::Session, [&server, mail, calendar](const WorkspaceRequest &request) {
            const QString me = request.session().personId;
            const QStringList connections = server.store().googleConnections(me);
            if (!mail->isConnected(me) && connections.contains("gmail"_L1)) {
                if (const std::optional<WorkspacePerson> person = server.store().person(me))
                    mail->connect(me, person->email);
            }
            if (connections.contains("calendar"_L1))
                calendar->grant(me);
            QJsonObject status = mail->status(me);
            status.insert(u"calendar"_s, mail->isConnected(me) && calendar->isGranted(me));
            return WorkspaceReply::json(status);
        });

    router.add("POST", u"/api/tarn-mail/rpc"_s, Access::Session, MailRPC(server, mail, calendar),
        WorkspaceLimits::mailBodyBytes);

    router.add("GET", u"/api/tarn-mail/img"_s, Access::Session, [mail](const WorkspaceRequest &request) {
        const std::optional<QString> url = MailImages::verify(
            mail->imageSecret(), request.query(u"u"_s), request.query(u"e"_s), request.query(u"s"_s), nowSeconds());
        if (!url)
            return WorkspaceReply::error(403, u"This image link is not signed or has expired."_s);
        const std::optional<MailImages::Image> image = MailImages::load(*url);
        if (!image)
            return WorkspaceReply::error(404, u"The image could not be fetched."_s);
        return WorkspaceReply { 200, image->mime, image->data, { { "Cache-Control"_ba, "private, max-age=3600"_ba } } };
    });

    if (server.options().testFaults) {
        // The queued send's time comes at once.
        router.add("POST", u"/api/test/mail/due"_s, Access::Public, [mail](const WorkspaceRequest &request) {
            if (!mail->makeDue(request.jsonBody().value_or(QJsonObject()).value("sendId"_L1).toString()))
                return WorkspaceReply::error(404, u"No such queued send."_s);
            mail->deliverDue();
            return WorkspaceReply::ok();
        });
        // A signed query with any expiry, to see expired ones refused.
        router.add("POST", u"/api/test/mail/sign"_s, Access::Public, [mail](const WorkspaceRequest &request) {
            const QJsonObject body = request.jsonBody().value_or(QJsonObject());
            return WorkspaceReply::json(QJsonObject { { u"query"_s,
                MailImages::sign(
                    mail->imageSecret(), body.value("url"_L1).toString(), body.value("expiresAt"_L1).toInteger()) } });
        });
    }
    return true;
}

} // namespace MailRoutes
