#pragma once

#include <QString>

// Building endpoint paths. Every id or query value placed in a path goes
// through `escape`, so an id holding "/", "?" or "&" can never reach another
// endpoint or smuggle a parameter.
namespace TarnPath {

// Percent-encodes everything outside the URL query-allowed characters, and
// always the six characters "&=+#?/".
[[nodiscard]] QString escape(const QString &value);

} // namespace TarnPath
