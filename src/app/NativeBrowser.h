#pragma once

class QUrl;

// Opens web addresses in the person's browser: the command named by
// $BROWSER when set (the Unix convention, also how a kiosk or a test picks
// one), otherwise the desktop's default handler.
namespace NativeBrowser {

[[nodiscard]] bool open(const QUrl &url);

} // namespace NativeBrowser
