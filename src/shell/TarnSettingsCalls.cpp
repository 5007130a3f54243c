#include "shell/TarnSettingsCalls.h"

#include "service/TarnAPI.h"
#include "service/TarnOK.h"

using namespace Qt::StringLiterals;

namespace TarnSettingsCalls {

namespace {

QCoro::Task<> patchMe(TarnAPI &api, QString path, QString key, QString value)
{
    std::optional<QJsonObject> body = QJsonObject { { key, value } };
    QByteArray method = "PATCH";
    co_await api.request<TarnOK>(std::move(path), std::move(method), std::move(body));
}

} // namespace

QCoro::Task<> setAccent(TarnAPI &api, QString accent)
{
    QString path = u"/api/team/me/accent"_s;
    QString key = u"accent"_s;
    co_await patchMe(api, std::move(path), std::move(key), std::move(accent));
}

QCoro::Task<> setTextSize(TarnAPI &api, QString textSize)
{
    QString path = u"/api/team/me/text-size"_s;
    QString key = u"text_size"_s;
    co_await patchMe(api, std::move(path), std::move(key), std::move(textSize));
}

QCoro::Task<> setAppearance(TarnAPI &api, QString background)
{
    QString path = u"/api/team/me/appearance"_s;
    QString key = u"background"_s;
    co_await patchMe(api, std::move(path), std::move(key), std::move(background));
}

QCoro::Task<TarnSessionsEnded> endOtherSessions(TarnAPI &api)
{
    QString path = u"/api/team/me/sessions"_s;
    QByteArray method = "DELETE";
    const TarnSessionsEnded ended = co_await api.request<TarnSessionsEnded>(std::move(path), std::move(method));
    co_return TarnSessionsEnded(ended);
}

} // namespace TarnSettingsCalls
