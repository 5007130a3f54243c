#pragma once

#include <QString>
#include <QStringList>

struct TarnHRRecordEdit;

// The checks on an owner's change to an HR record, made by the screen
// before it sends and by the workspace before it stores.
namespace HRRules {

// "employee", "part-time", "contractor" and "owner", in the order offered.
[[nodiscard]] const QStringList &employments();
// As the screen says it ("Part-time").
[[nodiscard]] QString employmentLabel(const QString &employment);
// Empty when the change may be stored.
[[nodiscard]] QString editProblem(const TarnHRRecordEdit &edit);

} // namespace HRRules
