#include "workspace/routes/BankFeedStream.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace BankFeedStream {

namespace {

struct Kind {
    const char16_t *description;
    qint64 least;
    qint64 most;
};

// Money out is negative. Small everyday spending outnumbers the rest, as on a
// real statement.
constexpr Kind kinds[] = {
    { u"Corner Café", -2'400, -650 },
    { u"Ledgerline Software", -9'900, -2'900 },
    { u"Northwood Timber", -92'000, -18'000 },
    { u"Card deposit", 12'000, 85'000 },
    { u"Harbour Hardware", -22'000, -4'500 },
    { u"Fuel Stop 24", -9'000, -3'500 },
    { u"Deposit Brightwater Dental", 120'000, 480'000 },
    { u"Corner Café", -1'900, -500 },
    { u"Card deposit", 8'000, 42'000 },
    { u"Parcel Post", -3'800, -1'200 },
};

// SplitMix64: a fixed, well-spread mix, the same on every machine.
quint64 mix(quint64 x)
{
    x += 0x9E3779B97F4A7C15ULL;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ULL;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBULL;
    return x ^ (x >> 31);
}

} // namespace

const QList<Account> &accounts()
{
    static const QList<Account> list {
        { u"Operating checking"_s, u"4021"_s, u"1000"_s },
        { u"Reserve savings"_s, u"7310"_s, u"1010"_s },
        { u"Tax holding"_s, u"5582"_s, u"1020"_s },
    };
    return list;
}

Row row(qint64 connectedMs, int history, int n)
{
    const quint64 seed = mix(quint64(connectedMs) ^ mix(quint64(n)));
    const Kind &kind = kinds[seed % std::size(kinds)];
    const qint64 span = kind.most - kind.least + 1;
    // Whole dollars for most rows, cents for the small ones.
    qint64 amount = kind.least + qint64((seed >> 16) % quint64(span));
    if (span > 10'000)
        amount = amount / 100 * 100;
    const qint64 due = connectedMs + qint64(n - history) * intervalMs;
    return { due, QDateTime::fromMSecsSinceEpoch(due).date().toString(Qt::ISODate),
        QString::fromUtf16(kind.description), amount ? amount : -100, u"feed-%1-%2"_s.arg(connectedMs).arg(n) };
}

int dueCount(qint64 connectedMs, int history, qint64 nowMs)
{
    if (nowMs < connectedMs)
        return history;
    return history + 1 + int((nowMs - connectedMs) / intervalMs);
}

} // namespace BankFeedStream
