#include "screens/documents/NativeDocumentModel.h"

#include "screens/documents/DocumentRules.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnDocument;

NativeDocumentModel::NativeDocumentModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "documentId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            { "kind", [](const Row &r) { return r.kind; } },
            { "client", [](const Row &r) { return r.client_name.value_or(QString()); } },
            { "owner", [](const Row &r) { return r.owner_name; } },
            { "status", [](const Row &r) { return DocumentRules::statusLabel(r); } },
            { "pages", [](const Row &r) { return r.pages; } },
            { "updated",
                [](const Row &r) {
                    const QDateTime at = QDateTime::fromString(r.updated_at, Qt::ISODateWithMs).toLocalTime();
                    return QLocale(QLocale::English).toString(at.date(), u"d MMM yyyy"_s);
                } },
            { "envelopeId", [](const Row &r) { return r.envelope_id.value_or(QString()); } },
            { "envelopeStatus", [](const Row &r) { return r.envelope_status.value_or(QString()); } },
        },
        parent)
{
}
