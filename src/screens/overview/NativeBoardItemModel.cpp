#include "screens/overview/NativeBoardItemModel.h"

#include <QDate>
#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnBoardItem;

NativeBoardItemModel::NativeBoardItemModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "itemId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            // "Oakline Studio · Sam Okoro · due 3 Dec", leaving out what it lacks.
            { "line",
                [](const Row &r) {
                    QStringList parts;
                    for (const std::optional<QString> &part : { r.client_name, r.owner_name })
                        if (part && !part->isEmpty())
                            parts.append(*part);
                    const QDate due = QDate::fromString(r.due_date.value_or(QString()), Qt::ISODate);
                    if (due.isValid())
                        parts.append(u"due "_s + QLocale(QLocale::English).toString(due, u"d MMM"_s));
                    return parts.join(u" · "_s);
                } },
        },
        parent)
{
}
