#include "assistant/TarnAgentResume.h"

using namespace Qt::StringLiterals;

QJsonObject TarnAgentResume::toJSON() const
{
    return { { u"decision"_s, decision }, { u"reconciliation"_s, reconciliation } };
}
