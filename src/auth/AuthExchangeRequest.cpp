#include "auth/AuthExchangeRequest.h"

using namespace Qt::StringLiterals;

QJsonObject AuthExchangeRequest::toJSON() const
{
    return { { u"code"_s, code }, { u"verifier"_s, verifier } };
}
