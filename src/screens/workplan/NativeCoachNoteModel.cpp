#include "screens/workplan/NativeCoachNoteModel.h"

#include <QDateTime>
#include <QLocale>

using Row = TarnCoachNote;

NativeCoachNoteModel::NativeCoachNoteModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "noteId", [](const Row &r) { return r.id; } },
            { "author", [](const Row &r) { return r.author_name; } },
            { "body", [](const Row &r) { return r.body; } },
            { "created",
                [](const Row &r) {
                    return QLocale(QLocale::English)
                        .toString(QDateTime::fromString(r.created_at, Qt::ISODateWithMs).toLocalTime().date(),
                            QLocale::ShortFormat);
                } },
        },
        parent)
{
}
