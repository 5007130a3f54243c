#include "workspace/routes/WebsiteStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QUrl>
#include <QtEndian>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;
using BooksSql::newID;
using BooksSql::nowMs;
using BooksSql::run;
using BooksSql::single;

namespace {

const QString websiteApp = u"Website"_s;

const char *const schema[] = {
    // `uptime` the last 30 days' in hundredths of a percent; `score` the last
    // check's overall score.
    "CREATE TABLE IF NOT EXISTS websites_sites ("
    " id TEXT PRIMARY KEY, client_id TEXT NOT NULL REFERENCES clients(id), domain TEXT NOT NULL UNIQUE,"
    " status TEXT NOT NULL, published_at INTEGER, uptime INTEGER NOT NULL, visits INTEGER NOT NULL,"
    " form_entries INTEGER NOT NULL, score INTEGER)",
};

QRandomGenerator generatorFor(const QString &host)
{
    const QByteArray digest = QCryptographicHash::hash(host.toLower().toUtf8(), QCryptographicHash::Sha256);
    return QRandomGenerator(qFromBigEndian<quint32>(digest.constData()));
}

} // namespace

WebsiteStore::WebsiteStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool WebsiteStore::createSchema()
{
    return BooksSql::runAll(m_store.database(), schema);
}

bool WebsiteStore::mayUse(const QString &me) const
{
    return m_store.opens(me, websiteApp);
}

bool WebsiteStore::hasSites() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM websites_sites"_s) > 0;
}

WorkspaceReply WebsiteStore::sites() const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT s.id, s.domain, c.name, s.status, s.published_at, s.uptime, s.visits, s.form_entries, s.score"
        " FROM websites_sites s JOIN clients c ON c.id = s.client_id ORDER BY s.domain"_s);
    QJsonArray answer;
    while (q.next()) {
        answer.append(QJsonObject { { u"id"_s, q.value(0).toString() }, { u"domain"_s, q.value(1).toString() },
            { u"client_name"_s, q.value(2).toString() }, { u"status"_s, q.value(3).toString() },
            { u"published_at"_s, q.value(4).isNull() ? QJsonValue() : QJsonValue(isoTime(q.value(4).toLongLong())) },
            { u"uptime"_s, q.value(5).toLongLong() }, { u"visits"_s, q.value(6).toLongLong() },
            { u"form_entries"_s, q.value(7).toLongLong() },
            { u"score"_s, q.value(8).isNull() ? QJsonValue() : QJsonValue(q.value(8).toLongLong()) } });
    }
    return WorkspaceReply::json(answer);
}

WorkspaceReply WebsiteStore::check(const QJsonObject &body)
{
    const QUrl url(body.value(u"url"_s).toString().trimmed(), QUrl::StrictMode);
    if (!url.isValid() || (url.scheme() != "https"_L1 && url.scheme() != "http"_L1) || !url.host().contains(u'.'))
        return WorkspaceReply::error(400, u"That is not a site's address."_s);
    const QString host = url.host().toLower();
    QRandomGenerator random = generatorFor(host);
    const qint64 speed = 25 + random.bounded(75);
    const qint64 mobile = 30 + random.bounded(70);
    const qint64 seo = 35 + random.bounded(65);
    const qint64 security = url.scheme() == "https"_L1 ? 70 + random.bounded(31) : 20;
    const qint64 accessibility = 40 + random.bounded(60);
    const qint64 overall = (speed + mobile + seo + security + accessibility) / 5;
    QJsonArray findings;
    const auto find = [&findings](const QString &severity, const QString &text) {
        findings.append(QJsonObject { { u"severity"_s, severity }, { u"text"_s, text } });
    };
    if (security < 50)
        find(u"high"_s, u"Not served over HTTPS: browsers mark it as not secure."_s);
    if (speed < 50)
        find(u"high"_s,
            u"The first page takes %1 s to show on a phone."_s.arg(double(30 + random.bounded(60)) / 10, 0, 'f', 1));
    if (mobile < 60)
        find(u"medium"_s, u"Text and buttons are too small on a phone."_s);
    if (seo < 60)
        find(u"medium"_s, u"Pages lack descriptions, so search results show stray text."_s);
    if (accessibility < 70)
        find(u"medium"_s, u"%1 images have no text for screen readers."_s.arg(2 + random.bounded(14)));
    if (random.bounded(2) == 0)
        find(u"low"_s, u"No way to book or ask for a quote without calling."_s);
    if (findings.isEmpty())
        find(u"low"_s, u"Nothing urgent: a sound site."_s);
    run(m_store.database(), u"UPDATE websites_sites SET score = ? WHERE domain = ?"_s, { overall, host });
    return WorkspaceReply::json(QJsonObject { { u"url"_s, url.toString() }, { u"checked_at"_s, isoTime(nowMs()) },
        { u"overall"_s, overall }, { u"speed"_s, speed }, { u"mobile"_s, mobile }, { u"seo"_s, seo },
        { u"security"_s, security }, { u"accessibility"_s, accessibility }, { u"findings"_s, findings } });
}

void WebsiteStore::addSite(const QString &clientId, const QString &domain, const QString &status, qint64 publishedAtMs,
    qint64 uptime, qint64 visits, qint64 formEntries)
{
    run(m_store.database(),
        u"INSERT INTO websites_sites (id, client_id, domain, status, published_at, uptime, visits, form_entries)"
        " VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
        { newID("ws-"_L1), clientId, domain, status,
            publishedAtMs > 0 ? QVariant(publishedAtMs) : QVariant(QMetaType::fromType<qint64>()), uptime, visits,
            formEntries });
}
