#include "screens/support/NativeSupportNoteModel.h"

#include <QDateTime>

using Row = TarnSupportComment;

NativeSupportNoteModel::NativeSupportNoteModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "noteId", [](const Row &r) { return r.id; } },
            { "author", [](const Row &r) { return r.author_name; } },
            { "body", [](const Row &r) { return r.body; } },
            { "time",
                [](const Row &r) {
                    return QDateTime::fromString(r.created_at, Qt::ISODateWithMs)
                        .toLocalTime()
                        .toString(QStringLiteral("d MMM HH:mm"));
                } },
        },
        parent)
{
}
