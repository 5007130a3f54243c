#include "workspace/routes/MailSeed.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/MailStore.h"

#include <QDateTime>
#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 minute = 60'000;

QByteArray resource(const QString &name)
{
    QFile file(u":/mail-seed/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        qWarning("workspace mail: the seed has no %s", qPrintable(name));
    return file.readAll();
}

// "Name <address>" or a bare address.
MailStore::Person personIn(const QString &text)
{
    static const QRegularExpression named(u"^\\s*(.*?)\\s*<([^>]+)>\\s*$"_s);
    const QRegularExpressionMatch match = named.match(text);
    if (match.hasMatch())
        return { match.captured(1), match.captured(2) };
    return { {}, text.trimmed() };
}

QList<MailStore::Person> peopleIn(const QJsonValue &value)
{
    QList<MailStore::Person> out;
    for (const QJsonValue &item : value.toArray())
        out.append(personIn(item.toString()));
    return out;
}

MailStore::NewMessage messageIn(const QJsonObject &json, qint64 at)
{
    MailStore::NewMessage message { .from = personIn(json.value("from"_L1).toString()),
        .to = peopleIn(json.value("to"_L1)),
        .cc = peopleIn(json.value("cc"_L1)),
        .dateMs = at - json.value("minutesAgo"_L1).toInteger() * minute,
        .text = json.value("text"_L1).toString(),
        .html = std::nullopt,
        .unread = json.value("unread"_L1).toBool(),
        .attachments = {} };
    const QString html = json.value("html"_L1).toString();
    // A body of only whitespace is kept as it is: some senders do that.
    if (html.endsWith(".html"_L1))
        message.html = QString::fromUtf8(resource(html));
    else if (!html.isEmpty())
        message.html = html;
    for (const QJsonValue &item : json.value("attachments"_L1).toArray()) {
        const QJsonObject file = item.toObject();
        message.attachments.append({ file.value("name"_L1).toString(), file.value("mime"_L1).toString(),
            resource(file.value("file"_L1).toString()), file.value("contentId"_L1).toString() });
    }
    return message;
}

MailStore::NewThread threadIn(const QString &owner, const QJsonObject &json, qint64 at)
{
    const QJsonValue snooze = json.value("snoozeMinutes"_L1);
    QStringList labels;
    for (const QJsonValue &label : json.value("labels"_L1).toArray())
        labels.append(label.toString());
    return { .owner = owner,
        .subject = json.value("subject"_L1).toString(),
        .category = json.value("category"_L1).toString(u"primary"_s),
        .folder = json.value("folder"_L1).toString(u"inbox"_s),
        .starred = json.value("starred"_L1).toBool(),
        .pinned = json.value("pinned"_L1).toBool(),
        .snoozedUntil = snooze.isDouble() ? std::optional(at + snooze.toInteger() * minute) : std::nullopt,
        .labels = labels };
}

// Shipping notices, enough that the inbox and Done page.
bool plantNotices(MailStore &mail, const QString &owner, const MailStore::Person &me, qint64 at)
{
    const MailStore::Person shop { u"Halvard & Co. Shop"_s, u"orders@shop.halvard.example"_s };
    for (int i = 0; i < 40; ++i) {
        const int order = 1040 - i;
        const QString subject = u"Order #%1 has shipped"_s.arg(order);
        const QString text = u"Order #%1 left the studio today with Northwind Freight, tracking NF-%2.\n\n"
                             "Halvard & Co. Shop"_s.arg(order)
                                 .arg(88000 + order);
        const QString thread = mail.addThread({ .owner = owner,
            .subject = subject,
            .category = u"updates"_s,
            .folder = i < 20 ? u"inbox"_s : u"done"_s });
        const MailStore::NewMessage notice {
            .from = shop, .to = { me }, .cc = {}, .dateMs = at - (6'000 + i * 720) * minute, .text = text
        };
        if (thread.isEmpty() || mail.addMessage(thread, notice, false).isEmpty())
            return false;
    }
    return true;
}

} // namespace

namespace MailSeed {

QString longNewsletter()
{
    const QString issue = QString::fromUtf8(resource(u"html/newsletter.html"_s));
    const qsizetype start = issue.indexOf("<tr><td style=\"padding:0 24px\"><h1"_L1);
    const qsizetype end = issue.indexOf("<tr><td style=\"padding:24px;font-size:12px"_L1);
    if (start < 0 || end < start)
        return issue;
    const QString article = issue.mid(start, end - start);
    QString body;
    for (int i = 1; body.size() < 2'000'000; ++i)
        body += article
            + u"<tr><td style=\"padding:0 24px\"><p>Archive entry %1 of the year's issues.</p></td></tr>"_s.arg(i);
    return issue.left(start) + body + issue.mid(end);
}

bool plant(MailStore &mail, const WorkspaceStore &store)
{
    const QJsonObject seed = QJsonDocument::fromJson(resource(u"mailbox.json"_s)).object();
    const qint64 at = QDateTime::currentMSecsSinceEpoch();
    const QString owner = u"p-maren"_s;

    for (const QJsonValue &item : seed.value("mailboxes"_L1).toArray()) {
        const QJsonObject box = item.toObject();
        const std::optional<WorkspacePerson> person = store.person(box.value("person"_L1).toString());
        if (!person || !mail.addMailbox(person->id, person->email, box.value("connected"_L1).toBool()))
            return false;
    }
    for (const QJsonValue &item : seed.value("labels"_L1).toArray())
        if (!mail.addLabel(owner, item[u"id"_s].toString(), item[u"name"_s].toString()))
            return false;

    QHash<QString, QString> threadIds;
    QHash<QString, QStringList> messageIds;
    for (const QJsonValue &item : seed.value("threads"_L1).toArray()) {
        const QJsonObject json = item.toObject();
        const QString thread = mail.addThread(threadIn(owner, json, at));
        if (thread.isEmpty())
            return false;
        threadIds.insert(json.value("key"_L1).toString(), thread);
        for (const QJsonValue &message : json.value("messages"_L1).toArray()) {
            const QString id
                = mail.addMessage(thread, messageIn(message.toObject(), at), message[u"outgoing"_s].toBool());
            if (id.isEmpty())
                return false;
            messageIds[json.value("key"_L1).toString()].append(id);
        }
    }

    const MailStore::Person me { u"Maren Holt"_s, u"maren@halvard.example"_s };
    const QString issue = mail.addThread({ .owner = owner,
        .subject = u"The Glaze Letter: the year in glazes (archive issue)"_s,
        .category = u"promotions"_s,
        .folder = u"inbox"_s });
    const MailStore::NewMessage archive { .from = { u"The Glaze Letter"_s, u"hello@glazeletter.example"_s },
        .to = { me },
        .cc = {},
        .dateMs = at - 2'000 * minute,
        .text = u"Every article of the year's issues in one letter."_s,
        .html = longNewsletter(),
        .unread = false,
        .attachments = {} };
    if (issue.isEmpty() || mail.addMessage(issue, archive, false).isEmpty() || !plantNotices(mail, owner, me, at))
        return false;

    for (const QJsonValue &item : seed.value("drafts"_L1).toArray()) {
        const QJsonObject json = item.toObject();
        const QString key = json.value("thread"_L1).toString();
        const QJsonObject thread = [&] {
            for (const QJsonValue &t : seed.value("threads"_L1).toArray())
                if (t[u"key"_s].toString() == key)
                    return t.toObject();
            return QJsonObject();
        }();
        const int index = json.value("message"_L1).toInt();
        const QJsonObject message = thread.value("messages"_L1).toArray().at(index).toObject();
        const QString text = message.value("text"_L1).toString();
        if (!mail.addDraft(owner,
                { .threadId = threadIds.value(key),
                    .messageId = messageIds.value(key).value(index),
                    .from = personIn(message.value("from"_L1).toString()),
                    .subject = thread.value("subject"_L1).toString(),
                    .preview = text.left(140),
                    .draft = json.value("draft"_L1).toString(),
                    .createdMs = at - 30 * minute }))
            return false;
    }

    // Everyone else connected starts with a note from the owner.
    for (const WorkspacePerson &person : store.people()) {
        if (person.id == owner || !mail.isConnected(person.id))
            continue;
        const QString thread = mail.addThread({ .owner = person.id,
            .subject = u"Studio hours over the holidays"_s,
            .category = u"primary"_s,
            .folder = u"inbox"_s });
        const MailStore::NewMessage note { .from = me,
            .to = { { person.name, person.email } },
            .cc = {},
            .dateMs = at - 600 * minute,
            .text
            = u"Hi %1,\n\nThe studio closes from 24 December to 2 January. Take what you need home before then.\n\nMaren"_s
                  .arg(person.name.section(u' ', 0, 0)),
            .html = std::nullopt,
            .unread = true,
            .attachments = {} };
        if (thread.isEmpty() || mail.addMessage(thread, note, false).isEmpty())
            return false;
    }
    return true;
}

} // namespace MailSeed
