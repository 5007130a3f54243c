#pragma once

#include <QString>
#include <QStringList>

// Where a quick meeting is held. With one invitee it is the direct-message
// room with that person; with several, a private channel named here.
namespace QuickMeeting {

// "meet-" and the first word of each participant's name (the person
// starting it first, then the invitees), lower-cased, joined with "-" and
// cut to 60 characters. Words with nothing a room name can hold (no letter
// or digit) are dropped; when none remain the name is the first 55
// characters of `givenName`, "-" and the last four digits of `nowMs`.
[[nodiscard]] QString channelName(
    const QString &userName, const QStringList &inviteeNames, const QString &givenName, qint64 nowMs);

} // namespace QuickMeeting
