#include "shell/NativeSidebarModel.h"

#include "shell/TarnNavigation.h"
#include "shell/TarnShell.h"

#include <QMetaEnum>

NativeSidebarModel::NativeSidebarModel(TarnNavigation &navigation)
    : NativeKeyedListModel(
        {
            { "kind",
                [](const TarnSidebarRow &row) {
                    return QString::fromLatin1(
                        QMetaEnum::fromType<TarnSidebarRow::Kind>().valueToKey(static_cast<int>(row.kind)));
                } },
            { "key", &TarnSidebarRow::key },
            { "label", &TarnSidebarRow::label },
            { "symbol", &TarnSidebarRow::symbol },
            { "lit", &TarnSidebarRow::lit },
        },
        &navigation)
    , m_navigation(navigation)
{
    connect(&m_navigation, &TarnNavigation::placeChanged, this, &NativeSidebarModel::refresh);
    connect(&m_navigation, &TarnNavigation::sidebarCollapsedChanged, this, &NativeSidebarModel::refresh);
    refresh();
}

bool NativeSidebarModel::open(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    const TarnSidebarRow &line = rows().at(row);
    const bool heading
        = line.kind == TarnSidebarRow::Kind::groupHeading || line.kind == TarnSidebarRow::Kind::sectionHeading;
    return !heading && m_navigation.open(line.destination);
}

void NativeSidebarModel::refresh()
{
    setRows(
        TarnShell::sidebarRows(m_navigation.navGroups(), m_navigation.destination(), m_navigation.sidebarCollapsed()));
    using Kind = TarnSidebarRow::Kind;
    int end = -1;
    for (int i = 0; i < rowCount(); ++i) {
        const TarnSidebarRow &line = rows().at(i);
        if (line.kind == Kind::item && line.lit)
            end = i;
        else if (end >= 0 && end == i - 1 && (line.kind == Kind::section || line.kind == Kind::sectionHeading))
            end = i;
    }
    if (end != m_litEnd) {
        m_litEnd = end;
        Q_EMIT litEndChanged();
    }
}
