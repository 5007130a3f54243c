#include "screens/documents/NativeSignerModel.h"

#include <QDateTime>
#include <QLocale>

using namespace Qt::StringLiterals;
using Row = TarnEnvelopeSigner;

NativeSignerModel::NativeSignerModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "order", [](const Row &r) { return r.order; } },
            { "name", [](const Row &r) { return r.name; } },
            { "email", [](const Row &r) { return r.email; } },
            { "status", [](const Row &r) { return r.status; } },
            { "statusLabel",
                [](const Row &r) {
                    if (r.status == "signed"_L1 && r.signed_at) {
                        const QDateTime at = QDateTime::fromString(*r.signed_at, Qt::ISODateWithMs).toLocalTime();
                        return u"Signed %1"_s.arg(QLocale(QLocale::English).toString(at, u"d MMM, HH:mm"_s));
                    }
                    return r.status == "sent"_L1 ? u"Their turn to sign"_s : u"Waiting"_s;
                } },
        },
        parent)
{
}
