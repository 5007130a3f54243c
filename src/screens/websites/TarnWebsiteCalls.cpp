#include "screens/websites/TarnWebsiteCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnWebsiteCalls {

QCoro::Task<QList<TarnWebsite>> websites(TarnAPI &api)
{
    return api.request<QList<TarnWebsite>>(TarnPath(u"/api/websites"_s));
}

QCoro::Task<TarnSiteCheck> proposalSiteCheck(TarnAPI &api, const TarnSiteCheckRequest &request)
{
    return api.request<TarnSiteCheck>(TarnPath(u"/api/websites/site-check"_s), TarnMethod::Post, request);
}

} // namespace TarnWebsiteCalls
