#include "auth/NativeBrowser.h"

#include <QProcess>
#include <QUrl>

using namespace Qt::StringLiterals;

bool NativeBrowser::open(const QUrl &url)
{
    // xdg-open is what the desktop itself uses to pick the default browser;
    // calling it directly keeps this usable from the command line, where
    // there is no GUI application to ask.
    QString browser = qEnvironmentVariable("BROWSER");
    if (browser.isEmpty())
        browser = u"xdg-open"_s;
    return QProcess::startDetached(browser, { url.toString(QUrl::FullyEncoded) });
}
