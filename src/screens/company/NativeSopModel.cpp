#include "screens/company/NativeSopModel.h"

#include <QDateTime>
#include <QLocale>

using Row = TarnSop;

NativeSopModel::NativeSopModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "sopId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            { "category", [](const Row &r) { return r.category; } },
            { "body", [](const Row &r) { return r.body; } },
            { "author", [](const Row &r) { return r.author_name; } },
            { "updated",
                [](const Row &r) {
                    return QLocale(QLocale::English)
                        .toString(QDateTime::fromString(r.updated_at, Qt::ISODateWithMs).toLocalTime().date(),
                            QLocale::ShortFormat);
                } },
        },
        parent)
{
}
