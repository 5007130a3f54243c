#include "screens/support/SupportBoardRules.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isSet(const std::optional<QString> &value)
{
    return value && !value->isEmpty();
}

// Days compare as their ISO text, so no card's date is parsed per keystroke.
bool dueMatches(const TarnSupportTaskSummary &task, const QString &due, const QString &today, const QString &weekEnd)
{
    if (due == "none"_L1)
        return !task.due_date;
    if (task.status == "done"_L1 || !task.due_date)
        return false;
    const QString &day = *task.due_date;
    if (due == "overdue"_L1)
        return day < today;
    if (due == "today"_L1)
        return day == today;
    if (due == "week"_L1)
        return day <= weekEnd;
    return true;
}

bool textMatches(const TarnSupportTaskSummary &task, const QStringList &words)
{
    return std::all_of(words.cbegin(), words.cend(), [&task](const QString &word) {
        return task.title.contains(word, Qt::CaseInsensitive)
            || (task.client_name && task.client_name->contains(word, Qt::CaseInsensitive))
            || (task.assignee_name && task.assignee_name->contains(word, Qt::CaseInsensitive));
    });
}

bool matchesWith(const TarnSupportTaskSummary &task, const TarnSupportFilters &filters, const QString &today,
    const QString &weekEnd, const QStringList &words)
{
    if (isSet(filters.assignee_id) && task.assignee_id != filters.assignee_id)
        return false;
    if (isSet(filters.client_id) && task.client_id != filters.client_id)
        return false;
    if (isSet(filters.priority) && task.priority != *filters.priority)
        return false;
    if (isSet(filters.due) && !dueMatches(task, *filters.due, today, weekEnd))
        return false;
    return words.isEmpty() || textMatches(task, words);
}

QStringList wordsOf(const TarnSupportFilters &filters)
{
    return filters.text ? filters.text->split(u' ', Qt::SkipEmptyParts) : QStringList();
}

// Absent values sort after present ones.
int compareOptional(const std::optional<QString> &a, const std::optional<QString> &b)
{
    if (a.has_value() != b.has_value())
        return a ? -1 : 1;
    return a ? a->compare(*b) : 0;
}

} // namespace

namespace SupportBoardRules {

const QList<QString> &statuses()
{
    static const QList<QString> all { u"todo"_s, u"in_progress"_s, u"waiting"_s, u"done"_s };
    return all;
}

const QList<QString> &priorities()
{
    static const QList<QString> all { u"low"_s, u"normal"_s, u"high"_s, u"urgent"_s };
    return all;
}

const QList<BuiltInView> &builtInViews()
{
    static const QList<BuiltInView> all { { u"all"_s, u"All tasks"_s }, { u"mine"_s, u"Mine"_s },
        { u"week"_s, u"Due this week"_s }, { u"overdue"_s, u"Overdue"_s }, { u"client"_s, u"By client"_s } };
    return all;
}

bool isBuiltIn(const QString &viewId)
{
    return std::any_of(builtInViews().cbegin(), builtInViews().cend(),
        [&viewId](const BuiltInView &view) { return view.id == viewId; });
}

TarnSupportFilters filtersOf(const QString &viewId, const QString &me)
{
    if (viewId == "mine"_L1)
        return { .assignee_id = me };
    if (viewId == "week"_L1)
        return { .due = u"week"_s };
    if (viewId == "overdue"_L1)
        return { .due = u"overdue"_s };
    return {};
}

TarnSupportFilters merged(const TarnSupportFilters &base, const TarnSupportFilters &over)
{
    const auto pick = [](const std::optional<QString> &a, const std::optional<QString> &b) { return isSet(b) ? b : a; };
    return { .assignee_id = pick(base.assignee_id, over.assignee_id),
        .client_id = pick(base.client_id, over.client_id),
        .priority = pick(base.priority, over.priority),
        .due = pick(base.due, over.due),
        .text = pick(base.text, over.text) };
}

bool matches(const TarnSupportTaskSummary &task, const TarnSupportFilters &filters, const QDate &today)
{
    return matchesWith(
        task, filters, today.toString(Qt::ISODate), today.addDays(6).toString(Qt::ISODate), wordsOf(filters));
}

QList<Column> columns(
    const QList<TarnSupportTaskSummary> &tasks, const TarnSupportFilters &filters, const QDate &today, bool byClient)
{
    const QString todayText = today.toString(Qt::ISODate);
    const QString weekEnd = today.addDays(6).toString(Qt::ISODate);
    const QStringList words = wordsOf(filters);
    QList<Column> out;
    for (const QString &status : statuses())
        out.append({ status, {} });
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        const TarnSupportTaskSummary &task = tasks.at(i);
        const qsizetype column = statuses().indexOf(task.status);
        if (column >= 0 && matchesWith(task, filters, todayText, weekEnd, words))
            out[column].rows.append(i);
    }
    const auto before = [&tasks, byClient](qsizetype left, qsizetype right) {
        const TarnSupportTaskSummary &a = tasks.at(left);
        const TarnSupportTaskSummary &b = tasks.at(right);
        if (byClient) {
            if (const int byName = compareOptional(a.client_name, b.client_name))
                return byName < 0;
        }
        if (const int byDue = compareOptional(a.due_date, b.due_date))
            return byDue < 0;
        const qsizetype rankA = priorities().indexOf(a.priority);
        const qsizetype rankB = priorities().indexOf(b.priority);
        if (rankA != rankB)
            return rankA > rankB;
        return a.title.localeAwareCompare(b.title) < 0;
    };
    for (Column &column : out)
        std::stable_sort(column.rows.begin(), column.rows.end(), before);
    return out;
}

std::optional<QString> fileRefusal(const QString &name, qint64 bytes)
{
    if (bytes <= fileLimit)
        return std::nullopt;
    return u"“%1” is larger than 5 MB, the most a task's file may be."_s.arg(name);
}

} // namespace SupportBoardRules
