#pragma once

#include "screens/documents/TarnDocument.h"
#include "shell/NativeKeyedListModel.h"

// A section's documents, newest first: title, kind, customer, owner, the
// state in words and whether it has an envelope to open.
class NativeDocumentModel : public NativeKeyedListModel<TarnDocument, &TarnDocument::id> {
    Q_OBJECT

public:
    explicit NativeDocumentModel(QObject *parent = nullptr);
};
