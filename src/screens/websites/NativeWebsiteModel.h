#pragma once

#include "screens/websites/TarnWebsite.h"
#include "shell/NativeKeyedListModel.h"

// The clients' sites matching the search, by domain.
class NativeWebsiteModel : public NativeKeyedListModel<TarnWebsite, &TarnWebsite::id> {
    Q_OBJECT

public:
    explicit NativeWebsiteModel(QObject *parent = nullptr);
};
