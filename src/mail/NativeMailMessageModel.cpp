#include "mail/NativeMailMessageModel.h"

using namespace Qt::StringLiterals;

NativeMailMessageModel::NativeMailMessageModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "messageId", [](const MailMessageRow &row) { return row.key; } },
            { "fromName", [](const MailMessageRow &row) { return row.fromName; } },
            { "fromEmail", [](const MailMessageRow &row) { return row.fromEmail; } },
            { "recipients", [](const MailMessageRow &row) { return row.recipients; } },
            { "date", [](const MailMessageRow &row) { return row.date; } },
            { "attachments", [](const MailMessageRow &row) { return row.attachments; } },
            { "parsing", [](const MailMessageRow &row) { return row.parsing; } },
            { "truncated", [](const MailMessageRow &row) { return row.truncated; } },
            { "hasQuoted", [](const MailMessageRow &row) { return row.hasQuoted; } },
            { "quotedShown", [](const MailMessageRow &row) { return row.quotedShown; } },
            { "blockedTrackers", [](const MailMessageRow &row) { return row.blockedTrackers; } },
            { "revision", [](const MailMessageRow &row) { return row.revision; } },
        },
        parent)
{
}

const MailMessageRow *NativeMailMessageModel::row(const QString &id) const
{
    for (const MailMessageRow &row : rows())
        if (row.key == id)
            return &row;
    return nullptr;
}

void NativeMailMessageModel::update(const QString &id, const std::function<void(MailMessageRow &)> &change)
{
    QList<MailMessageRow> next = rows();
    for (MailMessageRow &row : next)
        if (row.key == id)
            change(row);
    setRows(next);
}
