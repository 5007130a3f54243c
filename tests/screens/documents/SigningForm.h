#pragma once

#include "support/TestWorkspace.h"

#include <QList>
#include <QPair>
#include <QString>

// The signing page as a signer's browser uses it, over the test's own
// network access: a link's page fetched, its form posted back.
namespace SigningForm {

using Fields = QList<QPair<QString, QString>>;

[[nodiscard]] TestWorkspace::Answer open(TestWorkspace &workspace, const QString &signUrl);
[[nodiscard]] TestWorkspace::Answer post(TestWorkspace &workspace, const QString &signUrl, const Fields &fields);
// Signs as `name`, the agreement ticked.
[[nodiscard]] TestWorkspace::Answer sign(TestWorkspace &workspace, const QString &signUrl, const QString &name);

} // namespace SigningForm
