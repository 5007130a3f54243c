#include "workspace/routes/DocumentSeed.h"

#include "workspace/routes/DocumentStore.h"

#include <QDateTime>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 hourMs = 3600 * 1000;
constexpr qint64 dayMs = 24 * hourMs;

struct Seeded {
    QString id;
    QString kind;
    QString title;
    QString client;
    QString owner;
    QString status;
    int daysAgo;
    int pages;
};

const QList<Seeded> documents {
    { u"doc-ws-onboarding"_s, u"worksheet"_s, u"New client onboarding"_s, {}, u"p-maren"_s, u"final"_s, 40, 3 },
    { u"doc-ws-discovery"_s, u"worksheet"_s, u"Discovery call notes"_s, {}, u"p-tomas"_s, u"final"_s, 33, 2 },
    { u"doc-ws-scope"_s, u"worksheet"_s, u"Scope of work"_s, {}, u"p-maren"_s, u"final"_s, 21, 4 },
    { u"doc-ws-handover"_s, u"worksheet"_s, u"Project handover checklist"_s, {}, u"p-priya"_s, u"draft"_s, 2, 1 },
    { u"doc-ag-brightwater"_s, u"agreement"_s, u"Brightwater Dental service agreement"_s, u"c-brightwater"_s,
        u"p-maren"_s, u"final"_s, 60, 6 },
    { u"doc-ag-oakline"_s, u"agreement"_s, u"Oakline Studio retainer"_s, u"c-oakline"_s, u"p-tomas"_s, u"final"_s, 3,
        4 },
    { u"doc-ag-fernhill"_s, u"agreement"_s, u"Fernhill Bakery maintenance plan"_s, u"c-fernhill"_s, u"p-maren"_s,
        u"final"_s, 1, 5 },
    { u"doc-ag-marlow"_s, u"agreement"_s, u"Marlow & Sons data processing addendum"_s, u"c-marlow"_s, u"p-priya"_s,
        u"draft"_s, 0, 2 },
    { u"doc-pr-tidewater"_s, u"proposal"_s, u"Tidewater Yoga booking site"_s, u"c-tidewater"_s, u"p-priya"_s,
        u"final"_s, 12, 8 },
    { u"doc-pr-harbor"_s, u"proposal"_s, u"Harbor front desk inbox"_s, u"c-harbor"_s, u"p-tomas"_s, u"final"_s, 6, 5 },
    { u"doc-pr-quill"_s, u"proposal"_s, u"Quill newsletter and events"_s, u"c-quill"_s, u"p-maren"_s, u"draft"_s, 1,
        3 },
};

} // namespace

namespace DocumentSeed {

void plant(DocumentStore &store, QSqlDatabase db)
{
    db.transaction();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (const Seeded &d : documents)
        store.addDocument({ .id = d.id,
            .kind = d.kind,
            .title = d.title,
            .clientId = d.client,
            .ownerId = d.owner,
            .status = d.status,
            .updatedAtMs = now - d.daysAgo * dayMs - 5 * hourMs,
            .pages = d.pages });
    // Signed long ago, in order, a day apart.
    store.addEnvelope(u"doc-ag-brightwater"_s, u"p-maren"_s, u"Here is the agreement we went through on Tuesday."_s,
        { { u"Dr. Ines Calder"_s, u"ines@brightwater.example"_s }, { u"Maren Holt"_s, u"maren@halvard.example"_s } },
        now - 58 * dayMs, dayMs);
    store.addEnvelope(u"doc-pr-tidewater"_s, u"p-priya"_s, u"The proposal for the new booking site."_s,
        { { u"Lena Tidewell"_s, u"lena@tidewater.example"_s } }, now - 10 * dayMs, 2 * dayMs);
    // Out now: the customer signed this morning, the countersignature waits.
    store.addEnvelope(u"doc-ag-oakline"_s, u"p-tomas"_s, u"The retainer for the next six months, as agreed."_s,
        { { u"Rafael Okafor"_s, u"rafael@oakline.example"_s }, { u"Tomas Reyes"_s, u"tomas@halvard.example"_s },
            { u"Maren Holt"_s, u"maren@halvard.example"_s } },
        now - dayMs, dayMs - 4 * hourMs);
    // Ready to send.
    store.addEnvelope(u"doc-ag-fernhill"_s, u"p-maren"_s, u"The maintenance plan for the coming year."_s,
        { { u"Ada Fernhill"_s, u"ada@fernhill.example"_s }, { u"Maren Holt"_s, u"maren@halvard.example"_s } }, 0,
        DocumentStore::signMs);
    db.commit();
}

} // namespace DocumentSeed
