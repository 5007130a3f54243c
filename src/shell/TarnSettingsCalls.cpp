#include "shell/TarnSettingsCalls.h"

#include "service/TarnAPI.h"
#include "shell/TarnAppearanceUpdate.h"

using namespace Qt::StringLiterals;

namespace TarnSettingsCalls {

QCoro::Task<TarnOK> setAccent(TarnAPI &api, const QString &accent)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/team/me/accent"_s), TarnMethod::Patch, TarnAppearanceUpdate { .accent = accent });
}

QCoro::Task<TarnOK> setTextSize(TarnAPI &api, const QString &textSize)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/team/me/text-size"_s), TarnMethod::Patch, TarnAppearanceUpdate { .text_size = textSize });
}

QCoro::Task<TarnOK> setAppearance(TarnAPI &api, const QString &background)
{
    return api.request<TarnOK>(
        TarnPath(u"/api/team/me/appearance"_s), TarnMethod::Patch, TarnAppearanceUpdate { .background = background });
}

QCoro::Task<TarnSessionsEnded> endOtherSessions(TarnAPI &api)
{
    return api.request<TarnSessionsEnded>(TarnPath(u"/api/team/me/sessions"_s), TarnMethod::Delete);
}

} // namespace TarnSettingsCalls
