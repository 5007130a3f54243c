#pragma once

#include "mail/TarnMailRPC.h"

#include <QList>
#include <QString>

#include <optional>

// Something done to a whole thread from a list or from the thread itself.
class TarnMailAction {
public:
    enum class Kind {
        Snooze, // until a time, then back in the inbox
        Pin,
        Unpin,
        Done, // archived
        Trash,
        Untrash,
        Unread,
        Inbox, // moved back to the inbox
        Label, // a label set or taken off
    };

    [[nodiscard]] static TarnMailAction snooze(qint64 untilMs) { return { Kind::Snooze, untilMs, {}, true }; }
    [[nodiscard]] static TarnMailAction label(const QString &labelId, bool applied)
    {
        return { Kind::Label, 0, labelId, applied };
    }
    // Every kind without arguments.
    [[nodiscard]] static TarnMailAction simple(Kind kind) { return { kind, 0, {}, true }; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    // Whether the thread leaves a list of this view ("inbox", "starred",
    // "sent", "snoozed", "done", "trash"; empty for search results) once done.
    [[nodiscard]] bool leaves(const QString &view) const;

    // The method and params that perform it on a thread.
    [[nodiscard]] TarnMailRPC rpc(const QString &threadId) const;

    // The thread to select after an action, from the list's thread ids before
    // and after it: the current one while it is still listed; the first of
    // the threads that followed it and remain; else the nearest remaining one
    // before it (so acting on the last thread walks up); else the new list's
    // first. No selection stays none; a current thread that was not listed
    // before gives the new list's first.
    [[nodiscard]] static std::optional<QString> nextSelection(
        const std::optional<QString> &current, const QList<QString> &before, const QList<QString> &after);

private:
    TarnMailAction(Kind kind, qint64 untilMs, QString labelId, bool applied)
        : m_kind(kind)
        , m_untilMs(untilMs)
        , m_labelId(std::move(labelId))
        , m_applied(applied)
    {
    }

    Kind m_kind;
    qint64 m_untilMs;
    QString m_labelId;
    bool m_applied;
};
