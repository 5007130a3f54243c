#include "inbox/InboxTime.h"

using namespace Qt::StringLiterals;

namespace InboxTime {

QString label(const QString &serviceTime, const QDateTime &now)
{
    const QDateTime at = QDateTime::fromString(serviceTime, Qt::ISODateWithMs).toLocalTime();
    if (!at.isValid())
        return {};
    return at.date() == now.toLocalTime().date() ? at.toString(u"HH:mm"_s) : at.toString(u"d MMM"_s);
}

} // namespace InboxTime
