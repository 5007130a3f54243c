#include "workspace/routes/SigningRoutes.h"

#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceServer.h"
#include "workspace/routes/BooksSql.h"
#include "workspace/routes/DocumentStore.h"

#include <QDateTime>
#include <QJsonArray>
#include <QRegularExpression>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype nameLimit = 200;
constexpr qsizetype reasonLimit = 1000;

// What was typed into the form, kept when the page refuses it.
struct Typed {
    QString name;
    bool agreed = false;
    QString reason;
};

QString escaped(const QString &text)
{
    return text.toHtmlEscaped();
}

// The page's own frame: no scripts, nothing from elsewhere, forms back to
// this host only, and the token in the address never handed on as a referrer.
WorkspaceReply signingPage(const QString &title, const QString &content, int status = 200)
{
    static const auto frame = QStringLiteral(
        "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
        "<meta name=\"viewport\" content=\"width=device-width\"><title>%1</title>"
        "<style>body{font-family:sans-serif;max-width:40em;margin:3em auto;padding:0 1em;color:#222}"
        ".note{color:#666}.doc{border:1px solid #ccc;border-radius:6px;padding:.5em 1.2em;background:#fafafa}"
        ".error{color:#a40e26;font-weight:bold}input[type=text],textarea{font:inherit;padding:.3em;width:100%}"
        "button{font:inherit;padding:.4em 1.4em;margin-top:.4em}li{margin:.3em 0}</style></head>"
        "<body><h1>%1</h1>\n%2\n</body></html>\n");
    WorkspaceReply reply = WorkspaceReply::html(frame.arg(escaped(title), content), status);
    reply.headers.append({ "Content-Security-Policy"_ba,
        "default-src 'none'; style-src 'unsafe-inline'; form-action 'self'; frame-ancestors 'none'"_ba });
    reply.headers.append({ "Referrer-Policy"_ba, "no-referrer"_ba });
    reply.headers.append({ "Cache-Control"_ba, "no-store"_ba });
    return reply;
}

WorkspaceReply closedPage(SigningLinks::State state)
{
    switch (state) {
    case SigningLinks::State::Used:
        return signingPage(u"Signing link"_s, u"<p>This signing link has already been used.</p>"_s, 410);
    case SigningLinks::State::Superseded:
        return signingPage(u"Signing link"_s,
            u"<p>This signing link has been replaced by a newer one. Ask the sender for the current link.</p>"_s, 410);
    case SigningLinks::State::Expired:
        return signingPage(u"Signing link"_s,
            u"<p>This signing link has expired.</p><p class=\"note\">Ask the sender for a new one.</p>"_s, 410);
    default:
        return signingPage(u"Signing link"_s, u"<p>This signing link is not valid.</p>"_s, 404);
    }
}

QString when(const QString &iso)
{
    return QDateTime::fromString(iso, Qt::ISODateWithMs).toUTC().toString(u"d MMM yyyy, HH:mm 'UTC'"_s);
}

// Names compare without regard to case or spaces.
bool sameName(const QString &typed, const QString &expected)
{
    static const QRegularExpression spaces(u"\\s+"_s);
    return QString(typed).remove(spaces).toCaseFolded() == QString(expected).remove(spaces).toCaseFolded();
}

QString partiesList(const QJsonArray &signers, int you)
{
    QString list;
    for (const QJsonValue &value : signers) {
        const QJsonObject s = value.toObject();
        const int order = s.value("order"_L1).toInt();
        const QString status = s.value("status"_L1).toString();
        QString state = u"signs after the signers before"_s;
        if (status == "signed"_L1)
            state = u"signed "_s + when(s.value("signed_at"_L1).toString());
        else if (order == you)
            state = u"your turn"_s;
        list += u"<li>%1 &lt;%2&gt;%3: %4</li>"_s.arg(escaped(s.value("name"_L1).toString()),
            escaped(s.value("email"_L1).toString()), order == you ? u" (you)"_s : QString(), escaped(state));
    }
    return u"<ol>"_s + list + u"</ol>"_s;
}

WorkspaceReply formPage(DocumentStore &documents, const QString &token, const SigningLinks::Found &link,
    const Typed &typed = {}, const QString &refusal = {})
{
    const QJsonObject envelope = documents.envelopeObject(link.envelopeId);
    const std::optional<DocumentStore::Text> text = documents.documentText(envelope.value("document_id"_L1).toString());
    if (envelope.isEmpty() || !text)
        return closedPage(SigningLinks::State::Unknown);
    QString body = u"<p class=\"note\">%1 asks you to sign this document.</p>"_s.arg(
        escaped(envelope.value("sender_name"_L1).toString()));
    if (const QString message = envelope.value("message"_L1).toString(); !message.isEmpty())
        body += u"<blockquote>%1</blockquote>"_s.arg(escaped(message));
    body += u"<h2>Parties</h2>"_s + partiesList(envelope.value("signers"_L1).toArray(), link.position);
    body += u"<h2>The document</h2><div class=\"doc\"><p><strong>%1</strong></p>"_s.arg(escaped(text->title));
    for (const QString &line : text->lines)
        body += u"<p>%1</p>"_s.arg(escaped(line));
    const QString path = u"/sign/"_s + escaped(token);
    body += u"</div><p><a href=\"%1/pdf\">Download the PDF</a> (%2 %3)</p>"_s.arg(
        path, QString::number(text->pages), text->pages == 1 ? u"page"_s : u"pages"_s);
    body += u"<form method=\"post\" action=\"%1\">"_s.arg(path);
    if (!refusal.isEmpty())
        body += u"<p class=\"error\" role=\"alert\">%1</p>"_s.arg(escaped(refusal));
    body += u"<h2>Sign</h2><p><label for=\"name\">Your full name, typed as your signature</label><br>"
            "<input type=\"text\" id=\"name\" name=\"name\" autocomplete=\"off\" value=\"%1\"></p>"
            "<p><label><input type=\"checkbox\" name=\"agree\" value=\"yes\"%2> I agree to sign this document"
            " electronically</label></p><p><button name=\"action\" value=\"sign\">Sign</button></p>"
            "<h2>Decline</h2><p><label for=\"reason\">Why you decline</label><br>"
            "<textarea id=\"reason\" name=\"reason\" rows=\"3\">%3</textarea></p>"
            "<p><button name=\"action\" value=\"decline\">Decline</button></p></form>"_s.arg(
                escaped(typed.name), typed.agreed ? u" checked"_s : QString(), escaped(typed.reason));
    return signingPage(
        u"Sign \u201c%1\u201d"_s.arg(envelope.value("title"_L1).toString()), body, refusal.isEmpty() ? 200 : 422);
}

WorkspaceReply post(DocumentStore &documents, const WorkspaceRequest &request)
{
    const QString token = request.arguments().at(0);
    const SigningLinks::Found link = documents.links().find(token);
    if (link.state != SigningLinks::State::Open)
        return closedPage(link.state);
    // A form body: "+" is a space before the percent-decoding.
    const QUrlQuery form(QString::fromUtf8(request.body()).replace(u'+', u' '));
    const Typed typed { form.queryItemValue(u"name"_s, QUrl::FullyDecoded).trimmed(),
        form.queryItemValue(u"agree"_s) == "yes"_L1, form.queryItemValue(u"reason"_s, QUrl::FullyDecoded).trimmed() };
    const QString action = form.queryItemValue(u"action"_s);
    const QJsonObject envelope = documents.envelopeObject(link.envelopeId);
    const QJsonObject signer = envelope.value("signers"_L1).toArray().at(link.position - 1).toObject();
    const QString title = envelope.value("title"_L1).toString();
    SigningLinks::Answer answer { u"signed"_s, BooksSql::nowMs(), {}, request.remoteAddress(), {} };
    if (action == "sign"_L1) {
        if (typed.name.size() > nameLimit || !sameName(typed.name, signer.value("name"_L1).toString()))
            return formPage(documents, token, link, typed,
                u"The name you typed is not the name this document is addressed to. Type your full name as it is"
                " shown under Parties."_s);
        if (!typed.agreed)
            return formPage(documents, token, link, typed,
                u"Tick \u201cI agree to sign this document electronically\u201d to sign."_s);
        answer.typedName = typed.name;
    } else if (action == "decline"_L1) {
        if (typed.reason.isEmpty())
            return formPage(documents, token, link, typed, u"Say why you decline."_s);
        if (typed.reason.size() > reasonLimit)
            return formPage(documents, token, link, typed, u"A reason is at most %1 characters."_s.arg(reasonLimit));
        answer.outcome = u"declined"_s;
        answer.reason = typed.reason;
    } else {
        return formPage(documents, token, link, typed, u"Choose Sign or Decline."_s);
    }
    if (!documents.answer(token, link, answer))
        return closedPage(SigningLinks::State::Used);
    if (action == "decline"_L1)
        return signingPage(u"Declined"_s,
            u"<p>You declined to sign \u201c%1\u201d. The sender sees your reason.</p>"_s.arg(escaped(title)));
    return signingPage(u"Signed"_s,
        u"<p>Thank you, %1. You signed \u201c%2\u201d on %3.</p><p class=\"note\">You may close this page.</p>"_s.arg(
            escaped(typed.name), escaped(title),
            QDateTime::fromMSecsSinceEpoch(answer.atMs, Qt::UTC).toString(u"d MMM yyyy, HH:mm 'UTC'"_s)));
}

} // namespace

namespace SigningRoutes {

void add(WorkspaceServer &server, const std::shared_ptr<DocumentStore> &documents)
{
    WorkspaceRouter &router = server.router();
    using Access = WorkspaceRouter::Access;
    router.add("GET", u"/sign/:token"_s, Access::Public, [documents](const WorkspaceRequest &request) {
        const QString token = request.arguments().at(0);
        const SigningLinks::Found link = documents->links().find(token);
        return link.state == SigningLinks::State::Open ? formPage(*documents, token, link) : closedPage(link.state);
    });
    router.add("GET", u"/sign/:token/pdf"_s, Access::Public, [documents](const WorkspaceRequest &request) {
        const SigningLinks::Found link = documents->links().find(request.arguments().at(0));
        if (link.state != SigningLinks::State::Open)
            return closedPage(link.state);
        WorkspaceReply reply
            = documents->pdf(documents->envelopeObject(link.envelopeId).value("document_id"_L1).toString());
        reply.headers.append({ "Cache-Control"_ba, "no-store"_ba });
        return reply;
    });
    router.add("POST", u"/sign/:token"_s, Access::Public,
        [documents](const WorkspaceRequest &request) { return post(*documents, request); });
    if (server.options().testFaults)
        router.add("POST", u"/api/test/envelopes/:id/expire-link"_s, Access::Public,
            [documents](const WorkspaceRequest &request) {
                return documents->links().expire(request.arguments().at(0))
                    ? WorkspaceReply::ok()
                    : WorkspaceReply::error(404, u"That envelope has no live link."_s);
            });
}

} // namespace SigningRoutes
