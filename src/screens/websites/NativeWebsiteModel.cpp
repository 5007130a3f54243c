#include "screens/websites/NativeWebsiteModel.h"

#include "screens/websites/WebsiteRules.h"

#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnWebsite;

NativeWebsiteModel::NativeWebsiteModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "siteId", [](const Row &r) { return r.id; } },
            { "domain", [](const Row &r) { return r.domain; } },
            { "client", [](const Row &r) { return r.client_name; } },
            { "status", [](const Row &r) { return r.status; } },
            { "statusLabel", [](const Row &r) { return WebsiteRules::statusLabel(r.status); } },
            { "uptime", [](const Row &r) { return WebsiteRules::uptimeLabel(r.uptime); } },
            { "visits", [](const Row &r) { return QLocale(QLocale::English).toString(r.visits); } },
            { "formEntries", [](const Row &r) { return r.form_entries; } },
            { "score", [](const Row &r) { return r.score ? QString::number(*r.score) : QString(); } },
        },
        parent)
{
}
