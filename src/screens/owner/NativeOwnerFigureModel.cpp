#include "screens/owner/NativeOwnerFigureModel.h"

using Row = OwnerFigure;

NativeOwnerFigureModel::NativeOwnerFigureModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "figureKey", [](const Row &r) { return r.key; } },
            { "label", [](const Row &r) { return r.label; } },
            { "value", [](const Row &r) { return r.value; } },
            { "detail", [](const Row &r) { return r.detail; } },
            { "screen", [](const Row &r) { return r.screen; } },
            { "section", [](const Row &r) { return r.section; } },
            { "attention", [](const Row &r) { return r.attention; } },
        },
        parent)
{
}
