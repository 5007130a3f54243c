#include "shell/NativeBoardModel.h"

#include "shell/TarnNavigation.h"

NativeBoardModel::NativeBoardModel(TarnNavigation &navigation)
    : NativeKeyedListModel(
        {
            { "key", &TarnBoardGroup::key },
            { "label", &TarnBoardGroup::label },
            { "symbol", &TarnBoardGroup::symbol },
            { "opens", &TarnBoardGroup::opens },
            { "prompts", &TarnBoardGroup::prompts },
        },
        &navigation)
    , m_navigation(navigation)
{
}

bool NativeBoardModel::open(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    const std::optional<TarnDestination> place = rows().at(row).open;
    return place && m_navigation.open(*place);
}
