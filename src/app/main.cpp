#include "app/NativeBrowser.h"
#include "app/NativeDesktopEntry.h"
#include "app/NativeLauncherBadge.h"
#include "app/NativeRootState.h"
#include "app/NativeScreenshot.h"
#include "app/NativeSingleInstance.h"
#include "app/NativeWindowMemory.h"
#include "auth/NativeAuth.h"
#include "auth/NativeSessionStore.h"
#include "service/Config.h"
#include "service/TarnAPI.h"
#include "shell/NativeCommandSearch.h"
#include "shell/NativeSettingsState.h"
#include "shell/TarnNavigation.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

using namespace Qt::StringLiterals;

Q_IMPORT_QML_PLUGIN(PiloTarnPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_ShellPlugin)

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(u"pilo-tarn"_s);
    QGuiApplication::setOrganizationName(u"Halvard"_s);
    QGuiApplication::setOrganizationDomain(u"halvard.co"_s);
    QGuiApplication::setApplicationDisplayName(u"Pilo Tarn"_s);
    QGuiApplication::setDesktopFileName(u"pilo-tarn"_s);

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Pilo Tarn, the desktop client of your Tarn workspace."_s);
    parser.addHelpOption();
    const QCommandLineOption workspaceURL(u"workspace"_s, u"The workspace service's https address."_s, u"URL"_s);
    const QCommandLineOption workspaceCA(u"workspace-ca"_s, u"One extra certificate to trust for it (PEM)."_s,
                                         u"FILE"_s);
    const QCommandLineOption screenshot(u"screenshot"_s,
        u"Save the window as a PNG once it has loaded, then quit. PILO_TARN_SCREENSHOT_PROFILE names the place to show."_s,
        u"FILE.png"_s);
    parser.addOption(workspaceURL);
    parser.addOption(workspaceCA);
    parser.addOption(screenshot);
    parser.addPositionalArgument(u"address"_s, u"A pilo-tarn:// address handed over by the desktop."_s);
    parser.process(app);
    const QUrl address(parser.positionalArguments().value(0), QUrl::StrictMode);

    // A screenshot run stays out of the way of the running app.
    const bool capturing = parser.isSet(screenshot);
    NativeSingleInstance instance(u"pilo-tarn"_s);
    if (!capturing && !instance.claim())
        return instance.forward(address) ? 0 : 1;

    QString error;
    const std::optional<Config> config = Config::fromOptions(parser.value(workspaceURL), parser.value(workspaceCA),
                                                             &error);
    if (!config) {
        qCritical("%s", qPrintable(error));
        return 2;
    }
    NativeDesktopEntry::install(QGuiApplication::applicationFilePath());

    QSettings preferences;
    NativeSessionStore store;
    TarnAPI api(*config, store, &preferences);
    NativeAuth auth(*config, store, &NativeBrowser::open);
    TarnNavigation navigation(&preferences);
    NativeSettingsState settings(api, navigation, preferences);
    NativeCommandSearch search(navigation);
    NativeRootState root(api, auth, navigation);
    root.setStartDestination(NativeScreenshot::destination(qEnvironmentVariable(NativeScreenshot::profileVariable)));

    // The count on the launcher belongs to the person signed in.
    NativeLauncherBadge badge(QGuiApplication::desktopFileName() + u".desktop"_s);
    badge.clear();
    QObject::connect(&root, &NativeRootState::signedOut, &root, [&badge] { badge.clear(); });

    QQuickStyle::setStyle(u"Fusion"_s);
    QQmlApplicationEngine engine;
    engine.setInitialProperties({
        {u"root"_s, QVariant::fromValue(&root)},
        {u"navigation"_s, QVariant::fromValue(&navigation)},
        {u"settings"_s, QVariant::fromValue(&settings)},
        {u"search"_s, QVariant::fromValue(&search)},
    });
    engine.load(QUrl(u"qrc:/PiloTarn/qml/Main.qml"_s));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    if (!window)
        return 1;

    NativeWindowMemory memory(preferences);
    if (!capturing) {
        memory.restore(*window);
        QObject::connect(&app, &QGuiApplication::aboutToQuit, window, [&memory, window] { memory.save(*window); });
    }
    window->show();
    std::unique_ptr<NativeScreenshot> capture;
    if (capturing)
        capture = std::make_unique<NativeScreenshot>(*window, root, parser.value(screenshot));

    QObject::connect(&instance, &NativeSingleInstance::activated, &root, [&](const QUrl &url) {
        if (!url.isEmpty())
            root.openCallback(url);
        window->show();
        window->raise();
        window->requestActivate();
    });

    root.start();
    return QGuiApplication::exec();
}
