// Link vetting: whatever safeLink accepts is web or mail, the confirmation
// round trip hands back the same target, and addresses read as plain text
// come out exactly as a full URL parse reads them.
#include "mail/TarnMailHTML.h"
#include "mail/detail/LinkRules.h"

#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(QByteArrayView(data, qsizetype(size)));
    const std::optional<QUrl> link = TarnMailHTML::safeLink(text);
    if (link) {
        const QString scheme = link->scheme().toLower();
        if (scheme != "http"_L1 && scheme != "https"_L1 && scheme != "mailto"_L1)
            std::abort();
        const LinkDecision decision = TarnMailHTML::linkDecision(TarnMailHTML::confirmationURL(*link));
        if (decision.kind() == LinkDecision::Kind::Open)
            std::abort();
        (void)TarnMailHTML::isTrackerURL(*link);
        (void)TarnMailHTML::isDeceptive(text, *link);
    }
    namespace LinkRules = TarnMailHTML::detail::LinkRules;
    const QString decoded = TarnMailHTML::decodeEntities(text).trimmed();
    if (const std::optional<LinkRules::WebParts> parts = LinkRules::plainWebParts(decoded)) {
        const std::optional<QUrl> parsed = LinkRules::vettedByParse(decoded);
        if (!parsed || parsed->toString(QUrl::FullyEncoded) != decoded
            || parts->host != parsed->host(QUrl::FullyEncoded) || parts->path != parsed->path(QUrl::FullyEncoded))
            std::abort();
        if (LinkRules::isTracker(parts->host, parts->path, parts->pathAndQuery) != TarnMailHTML::isTrackerURL(*parsed))
            std::abort();
    }
    (void)TarnMailHTML::linkDecision(QUrl(text));
    (void)TarnMailHTML::linkDecision(QUrl(u"pilo-mail-confirm://open?u="_s + text));
    return 0;
}
