#pragma once

#include "shell/NativeKeyedListModel.h"

#include <QString>

// One entry of the view picker: a built-in view or one of the person's
// saved views.
struct SupportViewChoice {
    QString id;
    QString title;
    bool builtIn = false;

    friend bool operator==(const SupportViewChoice &, const SupportViewChoice &) = default;
};

// The view picker: the built-in views, then the saved ones.
class NativeSupportViewModel : public NativeKeyedListModel<SupportViewChoice, &SupportViewChoice::id> {
    Q_OBJECT

public:
    explicit NativeSupportViewModel(QObject *parent = nullptr);
};
