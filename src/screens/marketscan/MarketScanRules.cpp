#include "screens/marketscan/MarketScanRules.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

int rank(const QString &opportunity)
{
    if (opportunity == "high"_L1)
        return 0;
    return opportunity == "medium"_L1 ? 1 : 2;
}

} // namespace

namespace MarketScanRules {

bool isSortKey(const QString &key)
{
    return key == "opportunity"_L1 || key == "rating"_L1 || key == "distance"_L1 || key == "name"_L1;
}

QList<TarnMarketBusiness> shown(
    const QList<TarnMarketBusiness> &businesses, const QString &opportunity, const QString &sortKey)
{
    QList<TarnMarketBusiness> rows;
    std::copy_if(businesses.begin(), businesses.end(), std::back_inserter(rows),
        [&opportunity](const TarnMarketBusiness &b) { return opportunity.isEmpty() || b.opportunity == opportunity; });
    const auto order = [&sortKey](const TarnMarketBusiness &a, const TarnMarketBusiness &b) {
        if (sortKey == "rating"_L1)
            return a.rating.value_or(-1) > b.rating.value_or(-1);
        if (sortKey == "distance"_L1)
            return a.distance_km < b.distance_km;
        if (sortKey == "name"_L1)
            return QString::localeAwareCompare(a.name, b.name) < 0;
        return rank(a.opportunity) != rank(b.opportunity) ? rank(a.opportunity) < rank(b.opportunity)
                                                          : a.reviews > b.reviews;
    };
    std::stable_sort(rows.begin(), rows.end(), order);
    return rows;
}

QString ratingLabel(const TarnMarketBusiness &business)
{
    if (!business.rating || business.reviews == 0)
        return u"No reviews"_s;
    const QString count = business.reviews == 1 ? u"1 review"_s : u"%1 reviews"_s.arg(business.reviews);
    return u"%1 · %2"_s.arg(*business.rating, 0, 'f', 1).arg(count);
}

QString siteLabel(const TarnMarketBusiness &business)
{
    if (!business.website)
        return u"No website"_s;
    return business.site_score ? u"Site %1/100"_s.arg(*business.site_score) : u"Site not checked"_s;
}

QString scanTitle(const TarnMarketScan &scan)
{
    return u"%1 in %2"_s.arg(scan.trade.left(1).toUpper() + scan.trade.mid(1), scan.area);
}

QString distanceLabel(double km)
{
    return km < 10 ? u"%1 km"_s.arg(km, 0, 'f', 1) : u"%1 km"_s.arg(qRound(km));
}

} // namespace MarketScanRules
