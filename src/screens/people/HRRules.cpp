#include "screens/people/HRRules.h"

#include "screens/people/TarnPeopleRequests.h"

#include <QDate>

using namespace Qt::StringLiterals;

namespace HRRules {

namespace {

constexpr qsizetype textLimit = 200;

} // namespace

const QStringList &employments()
{
    static const QStringList kinds { u"employee"_s, u"part-time"_s, u"contractor"_s, u"owner"_s };
    return kinds;
}

QString employmentLabel(const QString &employment)
{
    if (employment.isEmpty())
        return {};
    return employment.at(0).toUpper() + employment.mid(1);
}

QString editProblem(const TarnHRRecordEdit &edit)
{
    if (edit.job_title.trimmed().isEmpty())
        return u"Give the job title."_s;
    if (!employments().contains(edit.employment))
        return u"Employment is employee, part-time, contractor or owner."_s;
    if (!QDate::fromString(edit.started_on.trimmed(), Qt::ISODate).isValid())
        return u"Type the start date as YYYY-MM-DD."_s;
    for (const QString *text : { &edit.job_title, &edit.phone, &edit.emergency_contact })
        if (text->size() > textLimit)
            return u"Keep each detail to %1 characters or fewer."_s.arg(textLimit);
    return {};
}

} // namespace HRRules
