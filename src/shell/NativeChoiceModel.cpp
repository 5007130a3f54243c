#include "shell/NativeChoiceModel.h"

NativeChoiceModel::NativeChoiceModel(
    const QList<TarnAppearanceChoice> &choices, std::function<void(const QString &)> choose, QObject *parent)
    : NativeKeyedListModel(
        {
            { "value", &TarnAppearanceChoice::value },
            { "label", &TarnAppearanceChoice::label },
            { "colour", &TarnAppearanceChoice::colour },
            { "darkColour", &TarnAppearanceChoice::darkColour },
            { "chosen", [this](const TarnAppearanceChoice &choice) { return choice.value == m_chosen; } },
        },
        parent)
    , m_choose(std::move(choose))
{
    setRows(choices);
}

void NativeChoiceModel::setChosen(const QString &value)
{
    if (m_chosen == value)
        return;
    const QString before = std::exchange(m_chosen, value);
    for (int row = 0; row < rowCount(); ++row) {
        const QString &choice = rows().at(row).value;
        if (choice == before || choice == value)
            Q_EMIT dataChanged(index(row), index(row));
    }
}

void NativeChoiceModel::choose(int row)
{
    if (row >= 0 && row < rowCount())
        m_choose(rows().at(row).value);
}
