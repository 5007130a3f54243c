#pragma once

#include "mail/TarnMailLink.h"

#include <QString>
#include <QStringView>
#include <QUrl>

#include <optional>

// The link and image-source rules, over the text of a URL. Most addresses in
// mail are plain: an http(s) scheme, a lower-case host name and characters a
// URL keeps as they are. Those are read straight from their text; anything
// else goes through a full QUrl parse, so both give the same answers.
namespace TarnMailHTML::detail::LinkRules {

// The scheme of the links the mail views ask about before opening.
inline constexpr QLatin1StringView confirmScheme("pilo-mail-confirm");

// http or https, in any case.
[[nodiscard]] bool isWebScheme(QStringView scheme);

// The parts of a plain web address, as views into its text.
struct WebParts {
    QStringView host; // lower case already
    QStringView path; // up to the query or fragment
    QStringView pathAndQuery; // the path, and "?query" when the query is not empty
};
// The parts of `text` when a URL parse would keep it exactly as it is (its
// fully encoded form is the text itself) and it is a valid http(s) address
// with a host and no user; nothing otherwise, which only means "parse it".
[[nodiscard]] std::optional<WebParts> plainWebParts(QStringView text);

// safeLink, kept as text: a plain href shares the caller's string.
[[nodiscard]] std::optional<TarnMailLink> vetted(const QString &href);
// safeLink's full parse of an entity-decoded, trimmed href.
[[nodiscard]] std::optional<QUrl> vettedByParse(const QString &text);

// The text of confirmationURL for a link's text: the confirmation scheme
// with the target fully percent-encoded as its one query item.
[[nodiscard]] QString confirmationText(QStringView linkText);

// An image source that starts with "http": a tracker, or the address it
// loads from (none when it is no valid web address).
struct RemoteImage {
    bool tracker = false;
    std::optional<TarnMailLink> link;
};
[[nodiscard]] RemoteImage remoteImage(const QString &source);

// An open-tracking address: a pixel, beacon or open-counting path, or a
// tracking path on one of the hosts that only track. Web addresses only.
[[nodiscard]] bool isTrackerURL(const QUrl &url);
// isTrackerURL over a lower-case host and the path and query as written.
[[nodiscard]] bool isTracker(QStringView lowerHost, QStringView path, QStringView pathAndQuery);
// isDeceptive over the text of the link's URL.
[[nodiscard]] bool isDeceptive(QStringView shown, const QString &linkText);

} // namespace TarnMailHTML::detail::LinkRules
