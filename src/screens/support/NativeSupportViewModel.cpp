#include "screens/support/NativeSupportViewModel.h"

using Row = SupportViewChoice;

NativeSupportViewModel::NativeSupportViewModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "viewId", [](const Row &r) { return r.id; } },
            { "title", [](const Row &r) { return r.title; } },
            { "builtIn", [](const Row &r) { return r.builtIn; } },
        },
        parent)
{
}
