#include "workspace/routes/MarketScanStore.h"

#include "workspace/WorkspaceStore.h"
#include "workspace/routes/BooksSql.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QtEndian>

using namespace Qt::StringLiterals;
using BooksSql::isoTime;
using BooksSql::newID;
using BooksSql::nowMs;
using BooksSql::run;
using BooksSql::single;

namespace {

const QString scanApp = u"Market Scan"_s;
constexpr qsizetype longestField = 60;

const char *const schema[] = {
    // `businesses` is the scan's answer as JSON: it never changes once made.
    "CREATE TABLE IF NOT EXISTS marketscan_scans ("
    " id TEXT PRIMARY KEY, person_id TEXT NOT NULL REFERENCES people(id), trade TEXT NOT NULL,"
    " area TEXT NOT NULL, scanned_at INTEGER NOT NULL, businesses TEXT NOT NULL)",
};

const QStringList prefixes { u"Harborview"_s, u"Maple Street"_s, u"Riverside"_s, u"Northgate"_s, u"Cedar"_s,
    u"Summit"_s, u"Lakeside"_s, u"Oak Park"_s, u"Bridgeport"_s, u"Willow"_s, u"Granite"_s, u"Elm Street"_s,
    u"Fernwood"_s, u"Juniper"_s, u"Pinecrest"_s, u"Sunset"_s, u"Meadow"_s, u"Kingsley"_s, u"Alder"_s, u"Beacon"_s,
    u"Union"_s, u"Old Town"_s, u"Westside"_s, u"Evergreen"_s };
const QStringList streets { u"Alder"_s, u"Belmont"_s, u"Division"_s, u"Hawthorne"_s, u"Burnside"_s, u"Fremont"_s,
    u"Killingsworth"_s, u"Morrison"_s, u"Salmon"_s, u"Stark"_s };

// "dentists" → "Dental", "bakeries" → "Bakery", "florist" → "Florist".
QString tradeNoun(const QString &trade)
{
    static const QList<std::pair<QString, QString>> known { { u"dent"_s, u"Dental"_s }, { u"baker"_s, u"Bakery"_s },
        { u"salon"_s, u"Salon"_s }, { u"plumb"_s, u"Plumbing"_s }, { u"yoga"_s, u"Yoga"_s },
        { u"vet"_s, u"Vet Clinic"_s }, { u"cafe"_s, u"Coffee"_s }, { u"coffee"_s, u"Coffee"_s },
        { u"roof"_s, u"Roofing"_s } };
    const QString lower = trade.toLower();
    for (const auto &[stem, noun] : known) {
        if (lower.startsWith(stem))
            return noun;
    }
    QString noun = trade.simplified();
    if (noun.endsWith(u's') && noun.size() > 3)
        noun.chop(1);
    return noun.left(1).toUpper() + noun.mid(1);
}

quint32 seedFor(const QString &trade, const QString &area)
{
    const QByteArray key = (trade.simplified().toLower() + u'|' + area.simplified().toLower()).toUtf8();
    const QByteArray digest = QCryptographicHash::hash(key, QCryptographicHash::Sha256);
    return qFromBigEndian<quint32>(digest.constData());
}

} // namespace

MarketScanStore::MarketScanStore(WorkspaceStore &store)
    : m_store(store)
{
}

bool MarketScanStore::createSchema()
{
    return BooksSql::runAll(m_store.database(), schema);
}

bool MarketScanStore::mayUse(const QString &me) const
{
    return m_store.opens(me, scanApp);
}

bool MarketScanStore::hasScans() const
{
    return single(m_store.database(), u"SELECT COUNT(*) FROM marketscan_scans"_s) > 0;
}

QJsonArray MarketScanStore::businesses(const QString &trade, const QString &area)
{
    QRandomGenerator random(seedFor(trade, area));
    const QString noun = tradeNoun(trade);
    QStringList names = prefixes;
    const int count = 14 + int(random.bounded(9));
    QJsonArray found;
    for (int i = 0; i < count && !names.isEmpty(); ++i) {
        const QString name = names.takeAt(int(random.bounded(int(names.size())))) + u' ' + noun;
        const bool reviewed = random.bounded(10) != 0;
        const double rating = 3.1 + random.bounded(19) / 10.0;
        const qint64 reviews = reviewed ? 3 + random.bounded(418) : 0;
        const bool website = random.bounded(4) != 0;
        const qint64 score = 22 + random.bounded(77);
        const bool booking = website && random.bounded(5) < 2;
        const bool texting = random.bounded(4) == 0;
        QStringList reasons;
        if (!website)
            reasons.append(u"No website"_s);
        else if (score < 50)
            reasons.append(u"Slow site (%1/100)"_s.arg(score));
        if (!booking)
            reasons.append(u"No online booking"_s);
        if (!texting)
            reasons.append(u"No texting"_s);
        if (reviewed && rating < 3.8)
            reasons.append(u"Reviews to answer (%1)"_s.arg(rating, 0, 'f', 1));
        const bool high = !website || (score < 50 && !booking) || reasons.size() >= 4;
        const QString slug = name.toLower().remove(u' ').remove(u'&');
        found.append(QJsonObject { { u"id"_s, u"mb-%1"_s.arg(i + 1) }, { u"name"_s, name },
            { u"address"_s, u"%1 %2 St"_s.arg(100 + random.bounded(8900)).arg(streets.at(int(random.bounded(10)))) },
            { u"distance_km"_s, (3 + random.bounded(118)) / 10.0 },
            { u"rating"_s, reviewed ? QJsonValue(rating) : QJsonValue() }, { u"reviews"_s, reviews },
            { u"website"_s, website ? QJsonValue(u"https://"_s + slug + u".example"_s) : QJsonValue() },
            { u"site_score"_s, website ? QJsonValue(score) : QJsonValue() }, { u"online_booking"_s, booking },
            { u"texting"_s, texting },
            { u"opportunity"_s,
                high                      ? u"high"_s
                    : reasons.size() >= 2 ? u"medium"_s
                                          : u"low"_s },
            { u"reasons"_s, QJsonArray::fromStringList(reasons) } });
    }
    return found;
}

QString MarketScanStore::addScan(const QString &personId, const QString &trade, const QString &area, qint64 scannedAtMs)
{
    const QString id = newID("ms-"_L1);
    run(m_store.database(),
        u"INSERT INTO marketscan_scans (id, person_id, trade, area, scanned_at, businesses) VALUES (?, ?, ?, ?, ?, ?)"_s,
        { id, personId, trade, area, scannedAtMs,
            QString::fromUtf8(QJsonDocument(businesses(trade, area)).toJson(QJsonDocument::Compact)) });
    return id;
}

QJsonObject MarketScanStore::scanObject(const QString &id, bool withBusinesses) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT id, trade, area, scanned_at, businesses FROM marketscan_scans WHERE id = ?"_s, { id });
    if (!q.next())
        return {};
    const QJsonArray found = QJsonDocument::fromJson(q.value(4).toString().toUtf8()).array();
    const auto high = std::count_if(found.begin(), found.end(),
        [](const QJsonValue &b) { return b.toObject().value(u"opportunity"_s).toString() == "high"_L1; });
    QJsonObject scan { { u"id"_s, q.value(0).toString() }, { u"trade"_s, q.value(1).toString() },
        { u"area"_s, q.value(2).toString() }, { u"scanned_at"_s, isoTime(q.value(3).toLongLong()) },
        { u"found"_s, found.size() }, { u"high"_s, qint64(high) } };
    if (withBusinesses)
        scan.insert(u"businesses"_s, found);
    return scan;
}

WorkspaceReply MarketScanStore::scans(const QString &me) const
{
    QSqlQuery q = run(m_store.database(),
        u"SELECT id FROM marketscan_scans WHERE person_id = ? ORDER BY scanned_at DESC, id LIMIT 20"_s, { me });
    QJsonArray answer;
    while (q.next())
        answer.append(scanObject(q.value(0).toString(), false));
    return WorkspaceReply::json(answer);
}

WorkspaceReply MarketScanStore::scan(const QString &me, const QJsonObject &body)
{
    const QString trade = body.value(u"trade"_s).toString().simplified();
    const QString area = body.value(u"area"_s).toString().simplified();
    if (trade.size() < 2 || area.size() < 2 || trade.size() > longestField || area.size() > longestField)
        return WorkspaceReply::error(400, u"Say what trade to scan for and where, each in 2 to 60 characters."_s);
    return WorkspaceReply::json(scanObject(addScan(me, trade, area, nowMs()), true), 201);
}

WorkspaceReply MarketScanStore::result(const QString &me, const QString &id) const
{
    if (single(
            m_store.database(), u"SELECT COUNT(*) FROM marketscan_scans WHERE id = ? AND person_id = ?"_s, { id, me })
        == 0)
        return WorkspaceReply::error(404, u"No such scan."_s);
    return WorkspaceReply::json(scanObject(id, true));
}
