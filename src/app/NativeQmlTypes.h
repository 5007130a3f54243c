#pragma once

#include "app/NativeRootState.h"
#include "auth/NativeAuth.h"

#include <QtQml/qqml.h>

// The C++ state objects QML draws. They are built by main and handed to the
// window as required properties; QML never creates them.
struct NativeRootStateForeign {
    Q_GADGET
    QML_FOREIGN(NativeRootState)
    QML_NAMED_ELEMENT(NativeRootState)
    QML_UNCREATABLE("Built by the application.")
};
