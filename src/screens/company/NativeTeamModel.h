#pragma once

#include "screens/company/TarnTeamMember.h"
#include "shell/NativeKeyedListModel.h"

// The team in its order: name, address, role, and for owners the apps each
// may open.
class NativeTeamModel : public NativeKeyedListModel<TarnTeamMember, &TarnTeamMember::id> {
    Q_OBJECT

public:
    explicit NativeTeamModel(QObject *parent = nullptr);
};
