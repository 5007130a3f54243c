#pragma once

#include "screens/documents/NativeDocumentsView.h"
#include "screens/documents/NativePdfPage.h"

#include <QtQml/qqml.h>

// The documents screen's state and its lists as QML sees them; the window builds them.
struct NativeDocumentsViewForeign {
    Q_GADGET
    QML_FOREIGN(NativeDocumentsView)
    QML_NAMED_ELEMENT(NativeDocumentsView)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeDocumentModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeDocumentModel)
    QML_NAMED_ELEMENT(NativeDocumentModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativeSignerModelForeign {
    Q_GADGET
    QML_FOREIGN(NativeSignerModel)
    QML_NAMED_ELEMENT(NativeSignerModel)
    QML_UNCREATABLE("Built by the application.")
};

struct NativePdfPreviewForeign {
    Q_GADGET
    QML_FOREIGN(NativePdfPreview)
    QML_NAMED_ELEMENT(NativePdfPreview)
    QML_UNCREATABLE("Built by the application.")
};

struct NativePdfPageForeign {
    Q_GADGET
    QML_FOREIGN(NativePdfPage)
    QML_NAMED_ELEMENT(NativePdfPage)
};
