#pragma once

#include "shell/NativeKeyedListModel.h"
#include "shell/TarnAppearanceChoice.h"

#include <functional>

// The choices of one appearance setting for QML, the one shown marked as
// chosen. Choosing a row hands its value to the setting's owner.
class NativeChoiceModel : public NativeKeyedListModel<TarnAppearanceChoice, &TarnAppearanceChoice::value> {
    Q_OBJECT

public:
    NativeChoiceModel(
        const QList<TarnAppearanceChoice> &choices, std::function<void(const QString &)> choose, QObject *parent);

    void setChosen(const QString &value);
    Q_INVOKABLE void choose(int row);

private:
    std::function<void(const QString &)> m_choose;
    QString m_chosen;
};
