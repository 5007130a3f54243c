#include "screens/support/NativeSupportFileModel.h"

#include <QLocale>

using Row = TarnSupportFile;

NativeSupportFileModel::NativeSupportFileModel(QObject *parent)
    : NativeKeyedListModel(
        {
            { "fileId", [](const Row &r) { return r.id; } },
            { "name", [](const Row &r) { return r.name; } },
            { "size", [](const Row &r) { return QLocale(QLocale::English).formattedDataSize(r.size); } },
            { "uploadedBy", [](const Row &r) { return r.uploaded_by_name; } },
        },
        parent)
{
}
