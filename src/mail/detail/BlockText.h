#pragma once

#include "mail/TarnMailBlock.h"

#include <QList>
#include <QString>

// Blocks flattened to text: list markers, "> " before quoted lines, cells
// joined by tabs, a signature after its "-- " line.
namespace TarnMailHTML::detail::BlockText {

[[nodiscard]] QString flattened(const TarnMailBlock &block);
// Blocks apart by a blank line; those without text are left out.
[[nodiscard]] QString flattened(const QList<TarnMailBlock> &blocks);

} // namespace TarnMailHTML::detail::BlockText
