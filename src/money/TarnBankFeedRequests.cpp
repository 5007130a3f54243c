#include "money/TarnBankFeedRequests.h"

using namespace Qt::StringLiterals;

QJsonObject TarnExternalBaseline::toJSON() const
{
    return { { u"date"_s, date }, { u"balance"_s, balance } };
}

QJsonObject TarnExternalReconcile::toJSON() const
{
    return { { u"date"_s, date } };
}
