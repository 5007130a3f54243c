#pragma once

#include "mail/TarnMailDocument.h"
#include "mail/TarnMailRun.h"

#include <QList>
#include <QStringView>

// Bodies without HTML: paragraphs apart by blank lines, history from the
// first quoted line or reply header on, web addresses linked.
namespace TarnMailHTML::detail::PlainTextReader {

[[nodiscard]] TarnMailDocument read(QStringView text, int characterLimit);
// One line as runs, its vetted web addresses linked; the runs' text is the line.
[[nodiscard]] QList<TarnMailRun> linkified(QStringView text);

} // namespace TarnMailHTML::detail::PlainTextReader
