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
    const auto signedBy = [](const QString &name, qint64 at, const QString &address) {
        return SigningLinks::Answer { u"signed"_s, at, name, address, {} };
    };
    // Signed long ago, in order, a day apart.
    const qint64 brightwater = now - 58 * dayMs;
    store.addEnvelope(u"doc-ag-brightwater"_s, u"p-maren"_s, u"Here is the agreement we went through on Tuesday."_s,
        { { u"Dr. Ines Calder"_s, u"ines@brightwater.example"_s }, { u"Maren Holt"_s, u"maren@halvard.example"_s } },
        brightwater,
        { signedBy(u"Dr. Ines Calder"_s, brightwater + dayMs, u"198.51.100.23"_s),
            signedBy(u"Maren Holt"_s, brightwater + 2 * dayMs, u"192.0.2.10"_s) });
    const qint64 tidewater = now - 10 * dayMs;
    store.addEnvelope(u"doc-pr-tidewater"_s, u"p-priya"_s, u"The proposal for the new booking site."_s,
        { { u"Lena Tidewell"_s, u"lena@tidewater.example"_s } }, tidewater,
        { signedBy(u"lena tidewell"_s, tidewater + 2 * dayMs, u"203.0.113.41"_s) });
    // Out now: the customer signed this morning, the countersignature waits
    // (its link is made when the workspace starts).
    store.addEnvelope(u"doc-ag-oakline"_s, u"p-tomas"_s, u"The retainer for the next six months, as agreed."_s,
        { { u"Rafael Okafor"_s, u"rafael@oakline.example"_s }, { u"Tomas Reyes"_s, u"tomas@halvard.example"_s },
            { u"Maren Holt"_s, u"maren@halvard.example"_s } },
        now - dayMs, { signedBy(u"Rafael Okafor"_s, now - 4 * hourMs, u"198.51.100.87"_s) });
    // Turned down by the customer.
    store.addEnvelope(u"doc-pr-harbor"_s, u"p-tomas"_s, u"The front desk inbox we talked about."_s,
        { { u"Nia Harbor"_s, u"nia@harbor.example"_s }, { u"Tomas Reyes"_s, u"tomas@halvard.example"_s } },
        now - 5 * dayMs,
        { { u"declined"_s, now - 3 * dayMs, {}, u"203.0.113.9"_s,
            u"We are keeping our current desk for this year; let's talk again in spring."_s } });
    // Ready to send.
    store.addEnvelope(u"doc-ag-fernhill"_s, u"p-maren"_s, u"The maintenance plan for the coming year."_s,
        { { u"Ada Fernhill"_s, u"ada@fernhill.example"_s }, { u"Maren Holt"_s, u"maren@halvard.example"_s } }, 0, {});
    db.commit();
}

} // namespace DocumentSeed
