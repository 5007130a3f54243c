#include "screens/marketscan/NativeMarketScanModel.h"

#include "screens/marketscan/MarketScanRules.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnMarketScan;

NativeMarketScanModel::NativeMarketScanModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "scanId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return MarketScanRules::scanTitle(r); } },
            { "summary",
                [](const Row &r) {
                    const QDateTime at = QDateTime::fromString(r.scanned_at, Qt::ISODateWithMs).toLocalTime();
                    return u"%1 found · %2 high · %3"_s.arg(r.found).arg(r.high).arg(
                        QLocale(QLocale::English).toString(at, u"d MMM"_s));
                } },
        },
        parent)
{
}
