#pragma once

#include <QString>

// The desktop file that names the app to the desktop and registers it as the
// handler of "pilo-tarn:" addresses (the sign-in callback). Written for the
// running executable into the person's applications folder when missing or
// stale, then registered with the desktop's MIME database.
namespace NativeDesktopEntry {

inline constexpr auto fileName = "pilo-tarn.desktop";

[[nodiscard]] QString contents(const QString &executable);
// Writes and registers the entry when it differs; true when it is in place.
bool install(const QString &executable);

} // namespace NativeDesktopEntry
