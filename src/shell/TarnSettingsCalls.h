#pragma once

#include "service/TarnOK.h"
#include "service/TarnSessionsEnded.h"

#include <QCoroTask>
#include <QString>

class TarnAPI;

// The settings window's endpoints: the signed-in person's own appearance
// choices and their other sessions.
namespace TarnSettingsCalls {

QCoro::Task<TarnOK> setAccent(TarnAPI &api, const QString &accent);
QCoro::Task<TarnOK> setTextSize(TarnAPI &api, const QString &textSize);
QCoro::Task<TarnOK> setAppearance(TarnAPI &api, const QString &background);
// Signs the person out everywhere but here.
QCoro::Task<TarnSessionsEnded> endOtherSessions(TarnAPI &api);

} // namespace TarnSettingsCalls
