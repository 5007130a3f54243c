#pragma once

#include <QString>

// Character references in mail text and attribute values, as mail writes
// them: the named references mail uses (the legacy few also without their
// semicolon), decimal and hexadecimal ones, Windows-1252 for 128...159.
namespace TarnMailHTML::detail::MailEntities {

// Text without "&" comes back shared, unchanged.
[[nodiscard]] QString decoded(const QString &text);

} // namespace TarnMailHTML::detail::MailEntities
