#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// A document's pages as a small PDF, written by hand: the local workspace
// keeps no files for its demo documents, so it draws each one from its record
// (its title on every page, the lines given on the first, the page number at
// the foot), in the standard Helvetica every reader has.
namespace DocumentPdf {

[[nodiscard]] QByteArray render(const QString &title, const QStringList &lines, int pages);

} // namespace DocumentPdf
