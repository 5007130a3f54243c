#include "mail/TarnMailHTML.h"

#include <QRegularExpression>
#include <QSet>
#include <QUrlQuery>

#include <array>

using namespace Qt::StringLiterals;

namespace {

QRegularExpression compiled(const QString &pattern, QRegularExpression::PatternOptions options = {})
{
    QRegularExpression expression(pattern, options);
    expression.optimize();
    return expression;
}

// The hosts whose pixels and redirects only track: an e-mail campaign content
// host, two marketing-analytics hosts and a transactional-mail host. Matched
// exactly, together with a tracking path, so that their real images still show.
constexpr std::array<QLatin1StringView, 4> trackingHosts = {
    "mcusercontent.com"_L1,
    "www.google-analytics.com"_L1,
    "api.segment.io"_L1,
    "mandrillapp.com"_L1,
};

const QLatin1StringView confirmScheme = "pilo-mail-confirm"_L1;

bool isWebScheme(const QString &lowerScheme)
{
    return lowerScheme == "https"_L1 || lowerScheme == "http"_L1;
}

bool isOnDomain(const QString &host, const QString &domain)
{
    return host == domain || (host.size() > domain.size() && host.endsWith(domain) && host.at(host.size() - domain.size() - 1) == u'.');
}

} // namespace

namespace TarnMailHTML {

std::optional<QUrl> safeLink(QStringView href)
{
    const QString text = decodeEntities(href.toString()).trimmed();
    if (text.isEmpty())
        return std::nullopt;
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid())
        url = QUrl(text, QUrl::TolerantMode); // percent-encodes what strict parsing refuses
    if (!url.isValid())
        return std::nullopt;
    const QString scheme = url.scheme().toLower();
    if (scheme == "mailto"_L1)
        return url.path().isEmpty() ? std::nullopt : std::optional<QUrl>(url);
    if (!isWebScheme(scheme) || url.host().isEmpty() || !url.userName().isEmpty() || !url.password().isEmpty())
        return std::nullopt;
    return url;
}

QUrl confirmationURL(const QUrl &target)
{
    QUrl url;
    url.setScheme(confirmScheme);
    url.setHost(u"open"_s);
    // Fully encoded, so that "&", "=", "#" and "+" of the target survive the trip.
    url.setQuery(u"u="_s + QString::fromLatin1(target.toEncoded().toPercentEncoding()), QUrl::StrictMode);
    return url;
}

LinkDecision linkDecision(const QUrl &url)
{
    if (url.scheme().toLower() == confirmScheme) {
        const QUrlQuery query(url);
        if (!query.hasQueryItem(u"u"_s))
            return LinkDecision::block();
        const QString value = query.queryItemValue(u"u"_s, QUrl::FullyDecoded);
        if (value.isEmpty())
            return LinkDecision::block();
        const std::optional<QUrl> target = safeLink(value);
        return target ? LinkDecision::confirm(*target) : LinkDecision::block();
    }
    const std::optional<QUrl> target = safeLink(url.toString(QUrl::FullyEncoded));
    return target ? LinkDecision::open(*target) : LinkDecision::block();
}

bool isTrackerURL(const QUrl &url)
{
    const QString scheme = url.scheme().toLower();
    if (!isWebScheme(scheme))
        return false;
    const QString host = url.host(QUrl::FullyEncoded).toLower();
    const QString path = url.path(QUrl::FullyEncoded).toLower();
    const QString query = url.query(QUrl::FullyEncoded).toLower();

    if (std::find(trackingHosts.cbegin(), trackingHosts.cend(), host) != trackingHosts.cend()
        || host.startsWith("click."_L1)) {
        static const QRegularExpression trackingPath = compiled(u"/(?:track|trk|wf|open|o|e2t|px|pixel)\\b"_s);
        static const QRegularExpression imagePath = compiled(u"\\.(?:jpe?g|png|webp|gif|svg)$"_s);
        if (trackingPath.match(path).hasMatch() && !imagePath.match(path).hasMatch())
            return true;
    }

    static const QRegularExpression patterns = compiled(u"/track/open"
                                                        "|/trk/open"
                                                        "|/open\\.(?:gif|png|php|aspx?)\\b"
                                                        "|/wf/open\\b"
                                                        "|/e2t/(?:o|c)/"
                                                        "|/(?:o|open)/[a-z0-9_-]{8,}(?:\\.gif)?(?:\\?|$)"
                                                        "|/pixel(?:\\.gif|\\.png|/|\\?|$)"
                                                        "|/beacon(?:\\.gif|/|\\?|$)"
                                                        "|/(?:email|mail)/(?:open|view)(?:/|\\?|$)"
                                                        "|[?&](?:utm_medium=email_open|open_id|trackopen)="
                                                        "|/(?:t|tr|track|tracking)\\.gif\\b"
                                                        "|/1x1(?:\\.gif|\\.png)?\\b"
                                                        "|/spacer\\.gif\\b"
                                                        "|/open(?:\\?|$)"
                                                        "|/m/o/[a-z0-9_.-]+\\.gif$"_s,
        QRegularExpression::CaseInsensitiveOption);
    const QString pathAndQuery = query.isEmpty() ? path : path + u'?' + query;
    // Each pattern needs one of these words; an ordinary image path has none.
    static constexpr std::array<QLatin1StringView, 8> needed
        = {"open"_L1, "/o/"_L1, "/e2t/"_L1, "pixel"_L1, "beacon"_L1, "view"_L1, ".gif"_L1, "1x1"_L1};
    if (std::none_of(needed.cbegin(), needed.cend(), [&](QLatin1StringView word) { return pathAndQuery.contains(word); }))
        return false;
    return patterns.match(pathAndQuery).hasMatch();
}

bool isDeceptive(QStringView text, const QUrl &url)
{
    if (!isWebScheme(url.scheme().toLower()))
        return false;
    const QString host = url.host(QUrl::FullyEncoded).toLower();
    if (host.isEmpty())
        return false;
    const QStringView shown = text.trimmed();
    // An address has a dot and no whitespace: most link texts are words.
    if (shown.isEmpty() || shown.size() > 300 || !shown.contains(u'.')
        || std::any_of(shown.begin(), shown.end(), [](QChar c) { return c.isSpace(); }))
        return false;
    static const QRegularExpression address
        = compiled(u"^(?:https?://)?((?:[a-z0-9-]+\\.)+[a-z]{2,})(?::\\d+)?(?:[/?#]\\S*)?$"_s,
            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = address.match(shown);
    if (!match.hasMatch())
        return false;
    const QString domain = match.captured(1).toLower();
    // "www.shop.example" shown for "shop.example", or the reverse, is the same site.
    return !isOnDomain(host, domain) && !isOnDomain(domain, host);
}

std::optional<QString> linkSummary(const QList<TarnMailRun> &runs)
{
    QStringList lines;
    QSet<QString> seen;
    for (const TarnMailRun &run : runs) {
        if (!run.link)
            continue;
        const QString absolute = run.link->toString(QUrl::FullyEncoded);
        if (seen.contains(absolute))
            continue;
        seen.insert(absolute);
        if (lines.size() == 6)
            break;
        lines.append(run.link->scheme().toLower() == "mailto"_L1 ? absolute : u"Opens "_s + absolute);
    }
    if (lines.isEmpty())
        return std::nullopt;
    return lines.join(u'\n');
}

std::optional<QString> attachmentID(QStringView contentID, const QList<AttachmentRef> &attachments)
{
    // Message headers write content ids in angle brackets; references do not.
    const auto bare = [](QStringView id) {
        id = id.trimmed();
        if (id.size() >= 2 && id.startsWith(u'<') && id.endsWith(u'>'))
            id = id.sliced(1, id.size() - 2).trimmed();
        return id;
    };
    const QStringView wanted = bare(contentID);
    if (wanted.isEmpty())
        return std::nullopt;
    for (const AttachmentRef &attachment : attachments) {
        if (bare(attachment.first).compare(wanted, Qt::CaseInsensitive) == 0)
            return attachment.first;
    }
    for (const AttachmentRef &attachment : attachments) {
        if (QStringView(attachment.second).trimmed().compare(wanted, Qt::CaseInsensitive) == 0)
            return attachment.first;
    }
    return std::nullopt;
}

} // namespace TarnMailHTML
