#pragma once

#include "shell/design/NativeColours.h"
#include "shell/design/NativeRadii.h"
#include "shell/design/NativeSpacing.h"
#include "shell/design/NativeTheme.h"
#include "shell/design/NativeTypeScale.h"
#include "shell/design/NativeUndoToast.h"

#include <QtQml/qqml.h>

// `Theme`: the instance the app attached to the engine. An engine without
// one (a tool previewing a component) gets a theme of its own with the
// standard look, which remembers nothing.
struct NativeThemeForeign {
    Q_GADGET
    QML_FOREIGN(NativeTheme)
    QML_NAMED_ELEMENT(Theme)
    QML_SINGLETON

public:
    static NativeTheme *create(QQmlEngine *engine, QJSEngine *);
};

struct NativeColoursForeign {
    Q_GADGET
    QML_FOREIGN(NativeColours)
    QML_VALUE_TYPE(nativeColours)
};

struct NativeTypeScaleForeign {
    Q_GADGET
    QML_FOREIGN(NativeTypeScale)
    QML_VALUE_TYPE(nativeTypeScale)
};

struct NativeSpacingForeign {
    Q_GADGET
    QML_FOREIGN(NativeSpacing)
    QML_VALUE_TYPE(nativeSpacing)
};

struct NativeRadiiForeign {
    Q_GADGET
    QML_FOREIGN(NativeRadii)
    QML_VALUE_TYPE(nativeRadii)
};

// Created by a screen's QML beside the toast that draws it.
struct NativeUndoToastForeign {
    Q_GADGET
    QML_FOREIGN(NativeUndoToast)
    QML_NAMED_ELEMENT(NativeUndoToast)
};
