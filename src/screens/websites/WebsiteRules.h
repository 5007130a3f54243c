#pragma once

#include "screens/websites/TarnWebsite.h"

#include <QString>

// The websites' words and the address a check is asked for, QtCore only.
namespace WebsiteRules {

// A typed address as the check is asked for: "https://" added when no
// scheme was typed, spaces trimmed; empty when it cannot be a site's
// address (another scheme, no host, a host without a dot).
[[nodiscard]] QString checkAddress(const QString &typed);
// "99.87 %".
[[nodiscard]] QString uptimeLabel(qint64 hundredths);
// "Live", "Building", "Paused".
[[nodiscard]] QString statusLabel(const QString &status);
// Whether the site's domain or client holds every word typed, any case.
[[nodiscard]] bool matchesSearch(const TarnWebsite &site, const QString &search);

} // namespace WebsiteRules
