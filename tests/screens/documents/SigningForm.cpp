#include "SigningForm.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace SigningForm {

TestWorkspace::Answer open(TestWorkspace &workspace, const QString &signUrl)
{
    return workspace.send("GET", QUrl(signUrl).path());
}

TestWorkspace::Answer post(TestWorkspace &workspace, const QString &signUrl, const Fields &fields)
{
    QByteArray body;
    for (const auto &[key, value] : fields)
        body += (body.isEmpty() ? "" : "&") + key.toUtf8() + '=' + QUrl::toPercentEncoding(value);
    return workspace.send(
        "POST", QUrl(signUrl).path(), body, { { "Content-Type"_ba, "application/x-www-form-urlencoded"_ba } });
}

TestWorkspace::Answer sign(TestWorkspace &workspace, const QString &signUrl, const QString &name)
{
    return post(workspace, signUrl, { { u"name"_s, name }, { u"agree"_s, u"yes"_s }, { u"action"_s, u"sign"_s } });
}

} // namespace SigningForm
