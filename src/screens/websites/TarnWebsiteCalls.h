#pragma once

#include "screens/websites/TarnSiteCheck.h"
#include "screens/websites/TarnSiteCheckRequest.h"
#include "screens/websites/TarnWebsite.h"

#include <QCoroTask>
#include <QList>

class TarnAPI;

// The websites screen's endpoints.
namespace TarnWebsiteCalls {

// The clients' sites the company runs, by domain.
QCoro::Task<QList<TarnWebsite>> websites(TarnAPI &api);
// Checks any site, for a proposal or one of the company's own.
QCoro::Task<TarnSiteCheck> proposalSiteCheck(TarnAPI &api, const TarnSiteCheckRequest &request);

} // namespace TarnWebsiteCalls
