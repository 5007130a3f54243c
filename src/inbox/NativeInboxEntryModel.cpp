#include "inbox/NativeInboxEntryModel.h"

#include "inbox/InboxTime.h"

#include <QVariantList>
#include <QVariantMap>

using namespace Qt::StringLiterals;
using Row = TarnInboxEntry;

NativeInboxEntryModel::NativeInboxEntryModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "entryId", [](const Row &r) { return r.id; } },
            { "inbound", [](const Row &r) { return r.direction == "inbound"_L1; } },
            { "body", [](const Row &r) { return r.body; } },
            { "author", [](const Row &r) { return r.author_name.value_or(QString()); } },
            { "status", [](const Row &r) { return r.status.value_or(QString()); } },
            { "time", [](const Row &r) { return InboxTime::label(r.created_at); } },
            { "mentions", [this](const Row &r) { return mentionNames(r); } },
            { "attachments",
                [](const Row &r) {
                    QVariantList files;
                    for (const TarnInboxAttachment &file : r.attachments)
                        files.append(QVariantMap { { u"name"_s, file.name }, { u"status"_s, file.status } });
                    return files;
                } },
            { "canDiscard", [](const Row &r) { return r.can_discard; } },
        },
        parent)
{
}

QStringList NativeInboxEntryModel::mentionNames(const TarnInboxEntry &entry) const
{
    QStringList names;
    for (const QString &id : entry.mentions)
        names.append(m_names.value(id, id));
    return names;
}
