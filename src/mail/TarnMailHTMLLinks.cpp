#include "mail/TarnMailHTML.h"

#include "mail/detail/LinkRules.h"

#include <QSet>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace TarnMailHTML {

std::optional<QUrl> safeLink(QStringView href)
{
    const std::optional<TarnMailLink> link = detail::LinkRules::vetted(href.toString());
    return link ? std::optional<QUrl>(link->url()) : std::nullopt;
}

QUrl confirmationURL(const QUrl &target)
{
    return QUrl(detail::LinkRules::confirmationText(target.toString(QUrl::FullyEncoded)), QUrl::StrictMode);
}

LinkDecision linkDecision(const QUrl &url)
{
    if (url.scheme().compare(detail::LinkRules::confirmScheme, Qt::CaseInsensitive) == 0) {
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
    return detail::LinkRules::isTrackerURL(url);
}

bool isDeceptive(QStringView text, const QUrl &url)
{
    return detail::LinkRules::isDeceptive(text, url.toString(QUrl::FullyEncoded));
}

std::optional<QString> linkSummary(const QList<TarnMailRun> &runs)
{
    QStringList lines;
    QSet<QString> seen;
    for (const TarnMailRun &run : runs) {
        if (!run.link)
            continue;
        const QString &absolute = run.link->text();
        if (seen.contains(absolute))
            continue;
        seen.insert(absolute);
        if (lines.size() == 6)
            break;
        lines.append(run.link->isMailto() ? absolute : u"Opens "_s + absolute);
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
