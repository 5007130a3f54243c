#include "shell/design/NativeDesignQmlTypes.h"

#include <QQmlEngine>
#include <QSettings>

NativeTheme *NativeThemeForeign::create(QQmlEngine *engine, QJSEngine *)
{
    NativeTheme *theme = NativeTheme::attachedTo(*engine);
    if (!theme) {
        auto *preferences = new QSettings(engine);
        theme = new NativeTheme(*preferences, engine);
        theme->attach(*engine);
    }
    QJSEngine::setObjectOwnership(theme, QJSEngine::CppOwnership);
    return theme;
}
