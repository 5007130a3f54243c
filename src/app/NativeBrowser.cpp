#include "app/NativeBrowser.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

bool NativeBrowser::open(const QUrl &url)
{
    const QString browser = qEnvironmentVariable("BROWSER");
    if (!browser.isEmpty())
        return QProcess::startDetached(browser, { url.toString(QUrl::FullyEncoded) });
    return QDesktopServices::openUrl(url);
}
