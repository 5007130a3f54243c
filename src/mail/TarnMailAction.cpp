#include "mail/TarnMailAction.h"

#include <QSet>
#include <QString>

using namespace Qt::StringLiterals;

bool TarnMailAction::leaves(const QString &view) const
{
    switch (m_kind) {
    case Kind::Done:
        return view == "inbox"_L1 || view == "snoozed"_L1;
    case Kind::Trash:
        return view != "trash"_L1;
    case Kind::Untrash:
        return view == "trash"_L1;
    case Kind::Inbox:
        return view == "done"_L1 || view == "snoozed"_L1 || view == "trash"_L1;
    case Kind::Snooze:
        return view == "inbox"_L1 || view == "done"_L1 || view == "trash"_L1;
    case Kind::Pin:
    case Kind::Unpin:
    case Kind::Unread:
    case Kind::Label:
        return false;
    }
    return false;
}

TarnMailRPC TarnMailAction::rpc(const QString &threadId) const
{
    QJsonObject params { { u"threadId"_s, threadId } };
    const auto modify = [&params](const QString &action) {
        params.insert(u"action"_s, action);
        return TarnMailRPC { u"mail.modify"_s, params };
    };
    switch (m_kind) {
    case Kind::Snooze:
        params.insert(u"untilMs"_s, m_untilMs);
        return { u"mail.snooze"_s, params };
    case Kind::Pin:
    case Kind::Unpin:
        params.insert(u"pinned"_s, m_kind == Kind::Pin);
        return { u"mail.pin"_s, params };
    case Kind::Label:
        params.insert(u"labelId"_s, m_labelId);
        params.insert(u"applied"_s, m_applied);
        return { u"mail.label"_s, params };
    case Kind::Done:
        return modify(u"done"_s);
    case Kind::Trash:
        return modify(u"trash"_s);
    case Kind::Untrash:
        return modify(u"untrash"_s);
    case Kind::Unread:
        return modify(u"unread"_s);
    case Kind::Inbox:
        return modify(u"inbox"_s);
    }
    return modify(u"inbox"_s);
}

std::optional<QString> TarnMailAction::nextSelection(
    const std::optional<QString> &current, const QList<QString> &before, const QList<QString> &after)
{
    if (!current)
        return std::nullopt;
    const QSet<QString> remaining(after.begin(), after.end());
    if (remaining.contains(*current))
        return current;
    const qsizetype at = before.indexOf(*current);
    if (at >= 0) {
        for (qsizetype i = at + 1; i < before.size(); ++i)
            if (remaining.contains(before.at(i)))
                return before.at(i);
        for (qsizetype i = at - 1; i >= 0; --i)
            if (remaining.contains(before.at(i)))
                return before.at(i);
    }
    if (after.isEmpty())
        return std::nullopt;
    return after.first();
}
