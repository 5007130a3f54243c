#pragma once

#include "screens/support/TarnSupportFile.h"
#include "shell/NativeKeyedListModel.h"

// A task's files, in the order they were added.
class NativeSupportFileModel : public NativeKeyedListModel<TarnSupportFile, &TarnSupportFile::id> {
    Q_OBJECT

public:
    explicit NativeSupportFileModel(QObject *parent = nullptr);
};
