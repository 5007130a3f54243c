#pragma once

#include "service/TarnSessionsEnded.h"

#include <QCoroTask>
#include <QString>

class TarnAPI;

// The settings window's endpoints: the signed-in person's own appearance
// choices and their other sessions.
namespace TarnSettingsCalls {

QCoro::Task<> setAccent(TarnAPI &api, QString accent);
QCoro::Task<> setTextSize(TarnAPI &api, QString textSize);
QCoro::Task<> setAppearance(TarnAPI &api, QString background);
// Signs the person out everywhere but here.
QCoro::Task<TarnSessionsEnded> endOtherSessions(TarnAPI &api);

} // namespace TarnSettingsCalls
