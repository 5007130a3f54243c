#include "mail/detail/LinkRules.h"

#include "mail/detail/MailEntities.h"
#include "mail/detail/MailRules.h"

#include <QRegularExpression>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail::LinkRules {

namespace {

QRegularExpression compiled(const QString &pattern)
{
    return MailRules::compiled(pattern, QRegularExpression::CaseInsensitiveOption);
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

bool isAsciiLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isLowerAlnum(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9');
}

bool isHexDigit(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F');
}

// Characters a URL parse keeps as written after the host: unreserved, the
// sub-delimiters, ':', '@', '/', '?' and the brackets. '%' and '#' are
// checked apart.
constexpr std::array<bool, 128> keptAfterHost = [] {
    std::array<bool, 128> kept {};
    for (char c = 'a'; c <= 'z'; ++c)
        kept[size_t(c)] = true;
    for (char c = 'A'; c <= 'Z'; ++c)
        kept[size_t(c)] = true;
    for (char c = '0'; c <= '9'; ++c)
        kept[size_t(c)] = true;
    for (const char c : std::string_view("-._~!$&'()*+,;=:@/?[]"))
        kept[size_t(static_cast<unsigned char>(c))] = true;
    return kept;
}();

bool isUnreserved(char16_t c)
{
    return isAsciiLetter(c) || isAsciiDigit(c) || c == u'-' || c == u'.' || c == u'_' || c == u'~';
}

int hexValue(char16_t c)
{
    return c <= u'9' ? c - u'0' : c - u'A' + 10;
}

// One label of a host name as a parse keeps it: letters, digits and inner
// hyphens, at most 63 long, and not an encoded ("xn--") or otherwise
// "--"-marked label, which name processing may rewrite.
bool isPlainLabel(QStringView label)
{
    if (label.isEmpty() || label.size() > 63 || label.front() == u'-' || label.back() == u'-')
        return false;
    return !(label.size() >= 4 && label[2] == u'-' && label[3] == u'-');
}

// The lower-case domain of a link text that reads as a web address: an
// optional http(s) scheme, a dotted name ending in two or more letters, an
// optional port, then nothing or a path, query or fragment. The text has no
// whitespace.
std::optional<QString> shownDomain(QStringView shown)
{
    if (shown.startsWith(u"https://", Qt::CaseInsensitive))
        shown = shown.sliced(8);
    else if (shown.startsWith(u"http://", Qt::CaseInsensitive))
        shown = shown.sliced(7);
    const auto isNameCharacter = [](QChar c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == u'-' || c == u'.'; };
    const qsizetype nameEnd = std::find_if_not(shown.begin(), shown.end(), isNameCharacter) - shown.begin();
    const QStringView name = shown.first(nameEnd);
    QStringView rest = shown.sliced(nameEnd);
    if (rest.startsWith(u':')) {
        const qsizetype digits = std::find_if_not(rest.begin() + 1, rest.end(), isAsciiDigit) - (rest.begin() + 1);
        if (digits == 0)
            return std::nullopt;
        rest = rest.sliced(1 + digits);
    }
    if (!rest.isEmpty() && rest.front() != u'/' && rest.front() != u'?' && rest.front() != u'#')
        return std::nullopt;
    // Two or more non-empty labels, the last of letters alone and at least two long.
    const qsizetype lastDot = name.lastIndexOf(u'.');
    if (lastDot <= 0)
        return std::nullopt;
    const QStringView top = name.sliced(lastDot + 1);
    if (top.size() < 2 || !std::all_of(top.begin(), top.end(), isAsciiLetter))
        return std::nullopt;
    if (name.startsWith(u'.') || name.contains(u".."))
        return std::nullopt;
    return name.toString().toLower();
}

} // namespace

bool isWebScheme(QStringView scheme)
{
    return scheme.compare(u"https", Qt::CaseInsensitive) == 0 || scheme.compare(u"http", Qt::CaseInsensitive) == 0;
}

std::optional<WebParts> plainWebParts(QStringView text)
{
    qsizetype i = 0;
    if (text.startsWith(u"https://"))
        i = 8;
    else if (text.startsWith(u"http://"))
        i = 7;
    else
        return std::nullopt;

    const qsizetype n = text.size();
    const qsizetype hostStart = i;
    qsizetype labelStart = i;
    for (; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c == u'/' || c == u'?' || c == u'#')
            break;
        if (c == u'.') {
            if (!isPlainLabel(text.sliced(labelStart, i - labelStart)))
                return std::nullopt;
            labelStart = i + 1;
            continue;
        }
        if (!isLowerAlnum(c) && c != u'-')
            return std::nullopt; // a port, a user, an upper-case or international name
    }
    // A host whose labels are all numbers ("203.0.113.7", "0x7f.1", "2130706433")
    // is an IPv4 address, which a parse rewrites; a last label that starts with
    // a letter rules that out.
    const QStringView lastLabel = text.sliced(labelStart, i - labelStart);
    if (!isPlainLabel(lastLabel) || !(lastLabel.front() >= u'a' && lastLabel.front() <= u'z') || i - hostStart > 253)
        return std::nullopt;

    WebParts parts;
    parts.host = text.sliced(hostStart, i - hostStart);
    const qsizetype pathStart = i;
    qsizetype queryMark = -1;
    qsizetype fragmentMark = -1;
    for (; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c == u'%') {
            // Escapes stay as they are unless they name an unreserved
            // character (which a parse decodes) or use lower-case digits.
            if (i + 2 >= n || !isHexDigit(text[i + 1].unicode()) || !isHexDigit(text[i + 2].unicode()))
                return std::nullopt;
            if (isUnreserved(char16_t(hexValue(text[i + 1].unicode()) * 16 + hexValue(text[i + 2].unicode()))))
                return std::nullopt;
            i += 2;
        } else if (c == u'#') {
            if (fragmentMark >= 0)
                return std::nullopt; // a second '#' is escaped by a parse
            fragmentMark = i;
        } else if (c >= 128 || !keptAfterHost[c]) {
            return std::nullopt;
        } else if (c == u'?' && queryMark < 0 && fragmentMark < 0) {
            queryMark = i;
        }
    }
    const qsizetype end = fragmentMark >= 0 ? fragmentMark : n;
    const qsizetype pathEnd = queryMark >= 0 ? queryMark : end;
    parts.path = text.sliced(pathStart, pathEnd - pathStart);
    // An empty query is no query: "/pixel?" reads as "/pixel".
    parts.pathAndQuery = text.sliced(pathStart, (queryMark >= 0 && queryMark + 1 == end ? queryMark : end) - pathStart);
    return parts;
}

std::optional<TarnMailLink> vetted(const QString &href)
{
    QString text = MailEntities::decoded(href).trimmed();
    if (text.isEmpty())
        return std::nullopt;
    if (plainWebParts(text))
        return TarnMailLink::fromEncoded(std::move(text));
    const std::optional<QUrl> url = vettedByParse(text);
    return url ? std::optional<TarnMailLink>(TarnMailLink(*url)) : std::nullopt;
}

std::optional<QUrl> vettedByParse(const QString &text)
{
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

QString confirmationText(QStringView linkText)
{
    static constexpr char16_t hex[] = u"0123456789ABCDEF";
    // Everything but the unreserved characters is escaped, so that "&", "=",
    // "#" and "+" of the target survive the trip.
    const QByteArray target = linkText.toUtf8();
    QString text;
    text.reserve(confirmScheme.size() + 10 + 3 * target.size());
    text.append(confirmScheme).append("://open?u="_L1);
    for (const char c : target) {
        const auto byte = static_cast<unsigned char>(c);
        if (isUnreserved(byte))
            text.append(QChar(char16_t(byte)));
        else
            text.append(u'%').append(QChar(hex[byte >> 4])).append(QChar(hex[byte & 15]));
    }
    text.squeeze();
    return text;
}

RemoteImage remoteImage(const QString &source)
{
    if (const std::optional<WebParts> parts = plainWebParts(source)) {
        if (isTracker(parts->host, parts->path, parts->pathAndQuery))
            return { true, std::nullopt };
        return { false, TarnMailLink::fromEncoded(source) };
    }
    const QUrl url(source, QUrl::TolerantMode);
    if (isTrackerURL(url))
        return { true, std::nullopt };
    if (url.isValid() && !url.host().isEmpty() && url.userName().isEmpty() && isWebScheme(url.scheme()))
        return { false, TarnMailLink(url) };
    return {};
}

bool isTracker(QStringView lowerHost, QStringView path, QStringView pathAndQuery)
{
    if (std::find(trackingHosts.cbegin(), trackingHosts.cend(), lowerHost) != trackingHosts.cend()
        || lowerHost.startsWith("click."_L1)) {
        static const QRegularExpression trackingPath = compiled(u"/(?:track|trk|wf|open|o|e2t|px|pixel)\\b"_s);
        static const QRegularExpression imagePath = compiled(u"\\.(?:jpe?g|png|webp|gif|svg)$"_s);
        if (trackingPath.match(path).hasMatch() && !imagePath.match(path).hasMatch())
            return true;
    }

    // Each pattern needs one of these words; an ordinary image path has none.
    // Looked for in an ASCII-lowered copy: eight case-blind searches cost more.
    static constexpr std::array<QStringView, 8> needed
        = { u"open", u"/o/", u"/e2t/", u"pixel", u"beacon", u"view", u".gif", u"1x1" };
    QVarLengthArray<char16_t, 256> lowered(pathAndQuery.size());
    std::transform(pathAndQuery.begin(), pathAndQuery.end(), lowered.begin(), [](QChar c) {
        const char16_t u = c.unicode();
        return (u >= u'A' && u <= u'Z') ? char16_t(u + 32) : u;
    });
    const QStringView haystack(lowered.data(), lowered.size());
    if (std::none_of(needed.cbegin(), needed.cend(), [&](QStringView word) { return haystack.contains(word); }))
        return false;
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
                                                        "|/m/o/[a-z0-9_.-]+\\.gif$"_s);
    return patterns.match(pathAndQuery).hasMatch();
}

bool isTrackerURL(const QUrl &url)
{
    if (!isWebScheme(url.scheme()))
        return false;
    const QString path = url.path(QUrl::FullyEncoded);
    const QString query = url.query(QUrl::FullyEncoded);
    return isTracker(url.host(QUrl::FullyEncoded).toLower(), path, query.isEmpty() ? path : path + u'?' + query);
}

bool isDeceptive(QStringView shown, const QString &linkText)
{
    shown = shown.trimmed();
    // An address has a dot and no whitespace: most link texts are words.
    if (shown.isEmpty() || shown.size() > 300 || !shown.contains(u'.')
        || std::any_of(shown.begin(), shown.end(), [](QChar c) { return c.isSpace(); }))
        return false;
    const std::optional<QString> domain = shownDomain(shown);
    if (!domain)
        return false;
    QString host;
    if (const std::optional<WebParts> parts = plainWebParts(linkText)) {
        host = parts->host.toString();
    } else {
        const QUrl url(linkText, QUrl::TolerantMode);
        if (!isWebScheme(url.scheme()))
            return false;
        host = url.host(QUrl::FullyEncoded).toLower();
    }
    if (host.isEmpty())
        return false;
    const auto isOnDomain = [](const QString &name, const QString &parent) {
        return name == parent
            || (name.size() > parent.size() && name.endsWith(parent)
                && name.at(name.size() - parent.size() - 1) == u'.');
    };
    // "www.shop.example" shown for "shop.example", or the reverse, is the same site.
    return !isOnDomain(host, *domain) && !isOnDomain(*domain, host);
}

} // namespace TarnMailHTML::detail::LinkRules
