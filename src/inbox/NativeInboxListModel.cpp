#include "inbox/NativeInboxListModel.h"

#include "inbox/InboxTime.h"

using Row = TarnInboxThreadSummary;

NativeInboxListModel::NativeInboxListModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "threadId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return titleOf(r); } },
            { "address", [](const Row &r) { return r.customer_address; } },
            { "kind", [](const Row &r) { return r.kind; } },
            { "owner", [](const Row &r) { return r.owner_name.value_or(QString()); } },
            { "preview", [](const Row &r) { return r.preview; } },
            { "previewDraft", [](const Row &r) { return r.preview_draft; } },
            { "time", [](const Row &r) { return InboxTime::label(r.last_message_at); } },
            { "unreplied", [](const Row &r) { return r.unreplied; } },
        },
        parent)
{
}

QString NativeInboxListModel::titleOf(const TarnInboxThreadSummary &thread)
{
    const QString name = thread.client_name.value_or(QString());
    return name.isEmpty() ? thread.customer_address : name;
}
