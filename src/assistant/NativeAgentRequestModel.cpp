#include "assistant/NativeAgentRequestModel.h"

#include "shell/TarnShell.h"

NativeAgentRequestModel::NativeAgentRequestModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "requestId", [](const TarnAgentRequest &r) { return QVariant(r.id); } },
            { "content", [](const TarnAgentRequest &r) { return QVariant(r.content); } },
            { "title", [](const TarnAgentRequest &r) { return QVariant(r.title.value_or(QString())); } },
            { "status", [](const TarnAgentRequest &r) { return QVariant(r.status); } },
            { "statusLabel",
                [](const TarnAgentRequest &r) { return QVariant(TarnShell::agentStatusLabel(r.status)); } },
            { "reply", [](const TarnAgentRequest &r) { return QVariant(r.reply.value_or(QString())); } },
            { "createdAt", [](const TarnAgentRequest &r) { return QVariant(r.created_at); } },
            { "page", [](const TarnAgentRequest &r) { return QVariant(r.page.value_or(QString())); } },
        },
        parent)
{
}
