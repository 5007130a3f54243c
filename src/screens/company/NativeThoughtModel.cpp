#include "screens/company/NativeThoughtModel.h"

#include <QDateTime>
#include <QLocale>

using Row = TarnThoughtPost;

NativeThoughtModel::NativeThoughtModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "postId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            { "body", [](const Row &r) { return r.body; } },
            { "author", [](const Row &r) { return r.author_name; } },
            { "created",
                [](const Row &r) {
                    return QLocale(QLocale::English)
                        .toString(QDateTime::fromString(r.created_at, Qt::ISODateWithMs).toLocalTime().date(),
                            QLocale::ShortFormat);
                } },
            { "read", [](const Row &r) { return r.read; } },
            { "decision", [](const Row &r) { return r.decision.value_or(QString()); } },
            { "decidedBy", [](const Row &r) { return r.decided_by_name.value_or(QString()); } },
        },
        parent)
{
}
