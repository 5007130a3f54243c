#pragma once

#include "screens/marketscan/TarnMarketBusiness.h"
#include "screens/marketscan/TarnMarketScan.h"

#include <QList>
#include <QString>

// The market scan's businesses narrowed, ordered and put in words, QtCore only.
namespace MarketScanRules {

// The orders offered: "opportunity" (high first, then the most reviewed),
// "rating" (best first, unrated last), "distance" (nearest first) and "name".
[[nodiscard]] bool isSortKey(const QString &key);
// Those of one opportunity ("high", "medium", "low"; empty for all), in the
// order `sortKey` names; ties keep the service's order.
[[nodiscard]] QList<TarnMarketBusiness> shown(
    const QList<TarnMarketBusiness> &businesses, const QString &opportunity, const QString &sortKey);
// "4.6 · 128 reviews", "5.0 · 1 review", "No reviews".
[[nodiscard]] QString ratingLabel(const TarnMarketBusiness &business);
// "Site 38/100", "No website".
[[nodiscard]] QString siteLabel(const TarnMarketBusiness &business);
// "Dentists in Portland, OR".
[[nodiscard]] QString scanTitle(const TarnMarketScan &scan);
// "0.4 km", "12 km".
[[nodiscard]] QString distanceLabel(double km);

} // namespace MarketScanRules
