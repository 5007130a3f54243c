#include "screens/documents/NativeSignerModel.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnEnvelopeSigner;

namespace {

QString shortTime(const std::optional<QString> &iso)
{
    const QDateTime at = QDateTime::fromString(iso.value_or(QString()), Qt::ISODateWithMs).toLocalTime();
    return QLocale(QLocale::English).toString(at, u"d MMM, HH:mm"_s);
}

QString statusLabel(const Row &r)
{
    if (r.status == "signed"_L1)
        return u"Signed"_s;
    if (r.status == "declined"_L1)
        return u"Declined"_s;
    if (r.status == "expired"_L1)
        return u"Link expired"_s;
    if (r.status == "cancelled"_L1)
        return u"Not asked"_s;
    return r.status == "sent"_L1 ? u"Their turn to sign"_s : u"Waiting"_s;
}

// When a signature or decline came, and from where.
QString answered(const Row &r)
{
    const QString from = r.answered_from ? u" from "_s + *r.answered_from : QString();
    if (r.status == "signed"_L1)
        return u"Signed %1%2"_s.arg(shortTime(r.signed_at), from);
    if (r.status == "declined"_L1)
        return u"Declined %1%2"_s.arg(shortTime(r.declined_at), from);
    if (r.status == "expired"_L1)
        return u"Their signing link has expired; send them a new one."_s;
    return {};
}

} // namespace

NativeSignerModel::NativeSignerModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "order", [](const Row &r) { return r.order; } },
            { "name", [](const Row &r) { return r.name; } },
            { "email", [](const Row &r) { return r.email; } },
            { "status", [](const Row &r) { return r.status; } },
            { "statusLabel", [](const Row &r) { return statusLabel(r); } },
            { "answered", [](const Row &r) { return answered(r); } },
            { "reason", [](const Row &r) { return r.decline_reason.value_or(QString()); } },
            { "signUrl", [](const Row &r) { return r.sign_url.value_or(QString()); } },
        },
        parent)
{
}
