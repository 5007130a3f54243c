#pragma once

class QUrl;

// Opens web addresses in the person's browser: the command named by
// $BROWSER when set (the Unix convention, also how a kiosk, a test or the
// demo picks one), otherwise the desktop's default through xdg-open. QtCore
// only, so that `tarn` opens the sign-in page exactly as the app does.
namespace NativeBrowser {

[[nodiscard]] bool open(const QUrl &url);

} // namespace NativeBrowser
