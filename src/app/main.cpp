#include "app/NativeBrowser.h"
#include "app/NativeDesktopEntry.h"
#include "app/NativeRootState.h"
#include "app/NativeSingleInstance.h"
#include "auth/NativeAuth.h"
#include "auth/NativeSessionStore.h"
#include "service/Config.h"
#include "service/TarnAPI.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QtQml/QQmlExtensionPlugin>

using namespace Qt::StringLiterals;

Q_IMPORT_QML_PLUGIN(PiloTarnPlugin)

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
    parser.addOption(workspaceURL);
    parser.addOption(workspaceCA);
    parser.addPositionalArgument(u"address"_s, u"A pilo-tarn:// address handed over by the desktop."_s);
    parser.process(app);
    const QUrl address(parser.positionalArguments().value(0), QUrl::StrictMode);

    NativeSingleInstance instance(u"pilo-tarn"_s);
    if (!instance.claim())
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
    NativeRootState root(api, auth);

    QQuickStyle::setStyle(u"Fusion"_s);
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{u"root"_s, QVariant::fromValue(&root)}});
    engine.load(QUrl(u"qrc:/PiloTarn/qml/Main.qml"_s));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());

    QObject::connect(&instance, &NativeSingleInstance::activated, &root, [&](const QUrl &url) {
        if (!url.isEmpty())
            root.openCallback(url);
        if (window) {
            window->show();
            window->raise();
            window->requestActivate();
        }
    });

    root.start();
    return QGuiApplication::exec();
}
