#pragma once

#include "mail/TarnMailSend.h"
#include "mail/TarnMailThread.h"

#include <QString>

// What the composer starts with when answering or passing on a message.
namespace MailComposeRules {

// The sender (or, for one's own message, its recipients); with `all` also
// everyone else on it, copied. Never oneself, never an address twice.
[[nodiscard]] TarnMailSend reply(
    const TarnMailThread &thread, const TarnMailMessage &message, const QString &myEmail, bool all);
// No recipients; the message below a separator with its headers.
[[nodiscard]] TarnMailSend forward(const TarnMailThread &thread, const TarnMailMessage &message);

// "Re: " or "Fwd: " before a subject that does not already start with it.
[[nodiscard]] QString prefixed(const QString &subject, const QString &prefix);
// "Name <address>", or the address alone.
[[nodiscard]] QString address(const TarnMailPerson &person);

inline constexpr QLatin1StringView forwardSeparator { "---------- Forwarded message ----------" };

} // namespace MailComposeRules
