#pragma once

#include "shell/NativeKeyedListModel.h"
#include "shell/TarnSidebarRow.h"

class TarnNavigation;

// The sidebar's lines (TarnShell::sidebarRows) for the navigation that owns
// it, following its access, place and collapsed state. A line is opened
// through the model, so a delegate needs nothing but its view.
class NativeSidebarModel : public NativeKeyedListModel<TarnSidebarRow> {
    Q_OBJECT
    Q_PROPERTY(int litEnd READ litEnd NOTIFY litEndChanged)

public:
    explicit NativeSidebarModel(TarnNavigation &navigation);

    // The last line of the lit item with its sections: a view that follows
    // it keeps them in sight. -1 when nothing is lit.
    [[nodiscard]] int litEnd() const { return m_litEnd; }

    // Opens the place of the line at `row`; false for a heading or a place
    // the navigation refuses.
    Q_INVOKABLE bool open(int row);

Q_SIGNALS:
    void litEndChanged();

private:
    void refresh();

    TarnNavigation &m_navigation;
    int m_litEnd = -1;
};
