#include "mail/TarnMailRPC.h"

#include "mail/TarnMailSend.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

QJsonObject TarnMailRPC::toJSON() const
{
    return { { u"method"_s, method }, { u"params"_s, params } };
}

TarnMailRPC TarnMailRPC::inbox(const QString &view, const std::optional<QString> &cursor)
{
    QJsonObject params { { u"view"_s, view } };
    if (cursor)
        params.insert(u"cursor"_s, *cursor);
    return { u"mail.inbox"_s, params };
}

TarnMailRPC TarnMailRPC::search(const QString &query)
{
    return { u"mail.search"_s, { { u"query"_s, query } } };
}

TarnMailRPC TarnMailRPC::thread(const QString &id)
{
    return { u"mail.thread"_s, { { u"id"_s, id } } };
}

TarnMailRPC TarnMailRPC::attachment(const QString &threadId, const QString &messageId, const QString &attachmentId)
{
    return { u"mail.attachment"_s,
        { { u"threadId"_s, threadId }, { u"messageId"_s, messageId }, { u"attachmentId"_s, attachmentId } } };
}

TarnMailRPC TarnMailRPC::send(const TarnMailSend &mail)
{
    return { u"mail.send"_s, mail.toJSON() };
}

TarnMailRPC TarnMailRPC::cancelSend(const QString &sendId)
{
    return { u"mail.cancelSend"_s, { { u"sendId"_s, sendId } } };
}

TarnMailRPC TarnMailRPC::labels()
{
    return { u"mail.labels"_s, {} };
}

TarnMailRPC TarnMailRPC::accounts()
{
    return { u"mail.accounts"_s, {} };
}

TarnMailRPC TarnMailRPC::drafts()
{
    return { u"mail.drafts.list"_s, {} };
}

TarnMailRPC TarnMailRPC::actOnDraft(const QString &id, bool skip, const QString &instruction)
{
    QJsonObject params { { u"id"_s, id }, { u"action"_s, skip ? u"skip"_s : u"instruct"_s } };
    if (!skip)
        params.insert(u"text"_s, instruction);
    return { u"mail.drafts.act"_s, params };
}

TarnMailRPC TarnMailRPC::signImages(const QStringList &urls)
{
    return { u"mail.images.sign"_s, { { u"urls"_s, QJsonArray::fromStringList(urls) } } };
}
