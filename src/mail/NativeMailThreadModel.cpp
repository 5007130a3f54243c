#include "mail/NativeMailThreadModel.h"

NativeMailThreadModel::NativeMailThreadModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "threadId", [](const MailThreadRow &row) { return row.key; } },
            { "section", [](const MailThreadRow &row) { return row.section; } },
            { "fromName", [](const MailThreadRow &row) { return row.card.from.displayName(); } },
            { "subject", [](const MailThreadRow &row) { return row.card.subject; } },
            { "snippet", [](const MailThreadRow &row) { return row.card.snippet; } },
            { "lastMs", [](const MailThreadRow &row) { return row.card.lastMs; } },
            { "count", [](const MailThreadRow &row) { return row.card.count; } },
            { "unread", [](const MailThreadRow &row) { return row.card.unread; } },
            { "starred", [](const MailThreadRow &row) { return row.card.starred; } },
            { "pinned", [](const MailThreadRow &row) { return row.card.pinned; } },
            { "hasAttachments", [](const MailThreadRow &row) { return row.card.hasAttachments; } },
            { "category", [](const MailThreadRow &row) { return row.card.category; } },
        },
        parent)
{
}

QStringList NativeMailThreadModel::ids() const
{
    QStringList out;
    for (const MailThreadRow &row : rows())
        out.append(row.key);
    return out;
}

const TarnMailCard *NativeMailThreadModel::card(const QString &id) const
{
    for (const MailThreadRow &row : rows())
        if (row.key == id)
            return &row.card;
    return nullptr;
}
