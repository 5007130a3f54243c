#include "chat/NativeChatTimelineModel.h"

#include "chat/MessagesTime.h"
#include "chat/TarnInitials.h"

#include <QVariantList>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

using Row = ChatTimelineRow;

QVariantList attachmentsOf(const Row &row)
{
    QVariantList out;
    for (const TarnAttachment &file : row.message.attachments) {
        const QString mime = file.mime.value_or(QString());
        out.append(QVariantMap { { u"id"_s, file.id }, { u"name"_s, file.name }, { u"size"_s, file.size },
            { u"mime"_s, mime }, { u"isImage"_s, mime.startsWith("image/"_L1) } });
    }
    return out;
}

QVariantList reactionsOf(const Row &row)
{
    QVariantList out;
    for (const TarnReaction &reaction : row.message.reactions.value_or(QList<TarnReaction>()))
        out.append(QVariantMap {
            { u"emoji"_s, reaction.emoji }, { u"count"_s, reaction.count }, { u"mine"_s, reaction.mine } });
    return out;
}

} // namespace

NativeChatTimelineModel::NativeChatTimelineModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "messageId", [](const Row &r) { return r.message.id; } },
            { "userId", [](const Row &r) { return r.message.user_id; } },
            { "author", [](const Row &r) { return r.message.author; } },
            { "initials", [](const Row &r) { return TarnInitials::letters(r.message.author); } },
            { "body", [](const Row &r) { return r.message.body; } },
            { "seq", [](const Row &r) { return r.message.seq; } },
            { "deleted", [](const Row &r) { return r.message.deleted_at.has_value(); } },
            { "replyCount", [](const Row &r) { return r.message.reply_count; } },
            { "saved", [](const Row &r) { return r.message.saved.value_or(false); } },
            { "attachments", [](const Row &r) { return attachmentsOf(r); } },
            { "reactions", [](const Row &r) { return reactionsOf(r); } },
            { "showsDay", [](const Row &r) { return r.layout.day; } },
            { "showsNew", [](const Row &r) { return r.layout.new_; } },
            { "showsHeader", [](const Row &r) { return r.layout.header; } },
            { "dayLabel", [](const Row &r) { return r.dayLabel; } },
            { "timeLabel", [](const Row &r) { return r.timeLabel; } },
        },
        parent)
{
}

QList<ChatTimelineRow> NativeChatTimelineModel::rowsOf(
    const QList<TarnMessage> &messages, std::optional<qint64> newFrom, const QDateTime &now)
{
    const QList<ChatRowLayout> layouts = ChatRowLayout::computeAll(messages, newFrom);
    QList<ChatTimelineRow> rows;
    rows.reserve(messages.size());
    for (qsizetype i = 0; i < messages.size(); ++i) {
        const TarnMessage &message = messages.at(i);
        const ChatRowLayout &layout = layouts.at(i);
        const std::optional<QDateTime> date = MessagesTime::date(message.created_at);
        // Labels only where they are drawn, so most rows compare cheaply.
        rows.append({ message, layout, date && layout.day ? MessagesTime::dayLabel(*date, now) : QString(),
            date && layout.header ? MessagesTime::timeLabel(*date) : QString() });
    }
    return rows;
}

void NativeChatTimelineModel::setMessages(
    const QList<TarnMessage> &messages, std::optional<qint64> newFrom, const QDateTime &now)
{
    setRows(rowsOf(messages, newFrom, now));
}
