#include "mail/MailComposeRules.h"

#include <QDateTime>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

// Mail programs write these in many ways; "Re: RE: Fw:" is what comes of
// not recognising them.
bool hasPrefix(const QString &subject, const QString &prefix)
{
    const QString trimmed = subject.trimmed();
    if (prefix.startsWith("Re"_L1))
        return trimmed.startsWith("re:"_L1, Qt::CaseInsensitive) || trimmed.startsWith("aw:"_L1, Qt::CaseInsensitive);
    return trimmed.startsWith("fwd:"_L1, Qt::CaseInsensitive) || trimmed.startsWith("fw:"_L1, Qt::CaseInsensitive);
}

QString list(const QList<TarnMailPerson> &people)
{
    QStringList out;
    for (const TarnMailPerson &person : people)
        out.append(MailComposeRules::address(person));
    return out.join(", "_L1);
}

} // namespace

namespace MailComposeRules {

QString prefixed(const QString &subject, const QString &prefix)
{
    return hasPrefix(subject, prefix) ? subject.trimmed() : prefix + subject.trimmed();
}

QString address(const TarnMailPerson &person)
{
    return person.name.isEmpty() ? person.email : u"%1 <%2>"_s.arg(person.name, person.email);
}

TarnMailSend reply(const TarnMailThread &thread, const TarnMailMessage &message, const QString &myEmail, bool all)
{
    QSet<QString> seen { myEmail.toLower() };
    const auto take = [&seen](const QList<TarnMailPerson> &people) {
        QStringList out;
        for (const TarnMailPerson &person : people)
            if (!seen.contains(person.email.toLower())) {
                seen.insert(person.email.toLower());
                out.append(person.email);
            }
        return out;
    };
    const bool mine = message.from.email.compare(myEmail, Qt::CaseInsensitive) == 0;
    QStringList to = take(mine ? message.to : QList { message.from });
    QStringList cc;
    if (all) {
        cc = take(mine ? QList<TarnMailPerson>() : message.to);
        cc += take(message.cc.value_or(QList<TarnMailPerson>()));
    }
    if (to.isEmpty() && !cc.isEmpty())
        to.append(cc.takeFirst());
    return { .to = to,
        .cc = cc,
        .subject = prefixed(thread.subject, u"Re: "_s),
        .text = {},
        .idempotencyKey = {},
        .threadId = thread.id,
        .messageId = message.id,
        .replyTo = message.from.email };
}

TarnMailSend forward(const TarnMailThread &thread, const TarnMailMessage &message)
{
    QStringList lines { {}, {}, QString(forwardSeparator), u"From: "_s + address(message.from),
        u"Date: "_s + QDateTime::fromMSecsSinceEpoch(message.date).toString(u"ddd, d MMM yyyy 'at' HH:mm"_s),
        u"Subject: "_s + thread.subject, u"To: "_s + list(message.to) };
    if (message.cc && !message.cc->isEmpty())
        lines.append(u"Cc: "_s + list(*message.cc));
    lines.append(QString());
    lines.append(message.text);
    return { .to = {}, .subject = prefixed(thread.subject, u"Fwd: "_s), .text = lines.join(u'\n') };
}

} // namespace MailComposeRules
