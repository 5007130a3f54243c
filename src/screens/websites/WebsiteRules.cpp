#include "screens/websites/WebsiteRules.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace WebsiteRules {

QString checkAddress(const QString &typed)
{
    QString text = typed.trimmed();
    if (text.isEmpty() || text.contains(u' '))
        return {};
    if (!text.contains("://"_L1))
        text.prepend(u"https://"_s);
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || (url.scheme() != "https"_L1 && url.scheme() != "http"_L1) || !url.host().contains(u'.')
        || url.host().startsWith(u'.') || url.host().endsWith(u'.'))
        return {};
    return url.toString();
}

QString uptimeLabel(qint64 hundredths)
{
    return u"%1.%2 %"_s.arg(hundredths / 100).arg(hundredths % 100, 2, 10, QChar(u'0'));
}

QString statusLabel(const QString &status)
{
    if (status == "live"_L1)
        return u"Live"_s;
    if (status == "building"_L1)
        return u"Building"_s;
    return status == "paused"_L1 ? u"Paused"_s : status;
}

bool matchesSearch(const TarnWebsite &site, const QString &search)
{
    const QString haystack = site.domain + u'\n' + site.client_name;
    const QStringList words = search.split(u' ', Qt::SkipEmptyParts);
    return std::all_of(words.begin(), words.end(),
        [&haystack](const QString &word) { return haystack.contains(word, Qt::CaseInsensitive); });
}

} // namespace WebsiteRules
