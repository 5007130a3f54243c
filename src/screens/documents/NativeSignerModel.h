#pragma once

#include "screens/documents/TarnEnvelopeSigner.h"
#include "shell/NativeKeyedListModel.h"

// The open envelope's signers in signing order, each with their state.
class NativeSignerModel : public NativeKeyedListModel<TarnEnvelopeSigner, &TarnEnvelopeSigner::email> {
    Q_OBJECT

public:
    explicit NativeSignerModel(QObject *parent = nullptr);
};
