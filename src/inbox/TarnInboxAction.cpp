#include "inbox/TarnInboxAction.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

TarnInboxAction TarnInboxAction::assign(const QString &ownerID)
{
    return { .action = u"assign"_s, .owner_id = ownerID };
}

TarnInboxAction TarnInboxAction::clear()
{
    return { .action = u"clear"_s };
}

TarnInboxAction TarnInboxAction::snooze(const QString &until)
{
    return { .action = u"snooze"_s, .until = until };
}

TarnInboxAction TarnInboxAction::done()
{
    return { .action = u"done"_s };
}

TarnInboxAction TarnInboxAction::reopen()
{
    return { .action = u"reopen"_s };
}

TarnInboxAction TarnInboxAction::reply(const QString &text, const QString &nonce, const QList<QString> &mentions)
{
    return { .action = u"reply"_s, .body = text, .nonce = nonce, .mentions = mentions };
}

TarnInboxAction TarnInboxAction::discard(const QString &entryID)
{
    return { .action = u"discard"_s, .entry_id = entryID };
}

QJsonObject TarnInboxAction::toJSON() const
{
    QJsonObject json;
    const auto put = [&json](const QString &key, const std::optional<QString> &value) {
        if (value)
            json.insert(key, *value);
    };
    put(u"owner_id"_s, owner_id);
    put(u"until"_s, until);
    put(u"body"_s, body);
    put(u"nonce"_s, nonce);
    put(u"entry_id"_s, entry_id);
    if (mentions)
        json.insert(u"mentions"_s, QJsonArray::fromStringList(*mentions));
    return json;
}
