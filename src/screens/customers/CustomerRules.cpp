#include "screens/customers/CustomerRules.h"

#include "chat/MessagesTime.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTimeZone>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Lower case without accents, so "Cafe" finds "Café".
QString folded(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_D);
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing)
            out.append(c.toCaseFolded());
    }
    return out;
}

QString digits(const QString &text)
{
    QString out;
    for (const QChar c : text) {
        if (c.isDigit())
            out.append(c);
    }
    return out;
}

} // namespace

namespace CustomerRules {

const QList<Stage> &stages()
{
    static const QList<Stage> all = {
        { u"lead"_s, u"Lead"_s },
        { u"qualified"_s, u"Qualified"_s },
        { u"proposal"_s, u"Proposal"_s },
        { u"customer"_s, u"Customer"_s },
        { u"lost"_s, u"Lost"_s },
    };
    return all;
}

QString stageLabel(const QString &id)
{
    for (const Stage &stage : stages()) {
        if (stage.id == id)
            return stage.label;
    }
    return id;
}

qsizetype stageOrder(const QString &id)
{
    const QList<Stage> &all = stages();
    const auto it = std::find_if(all.cbegin(), all.cend(), [&id](const Stage &stage) { return stage.id == id; });
    return it - all.cbegin();
}

QString kindLabel(const QString &kind)
{
    static const QList<std::pair<QString, QString>> labels = {
        { u"note"_s, u"Note"_s },
        { u"call"_s, u"Call"_s },
        { u"inbox"_s, u"Message"_s },
        { u"mail"_s, u"Mail"_s },
        { u"task"_s, u"Task"_s },
        { u"stage"_s, u"Stage"_s },
        { u"support"_s, u"Support"_s },
    };
    for (const auto &[id, label] : labels) {
        if (id == kind)
            return label;
    }
    return u"Activity"_s;
}

QList<CustomerTimelineRow> timelineRows(const QList<TarnTimelineEvent> &events, const QDateTime &now)
{
    // Times are placed in the zone's own tables: a conversion through the C
    // library's local time looks at the zone file again for every row.
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const QLocale locale;
    // As the chat's rows: the locale's short time without seconds.
    static const QRegularExpression seconds(u"[:.]?s{1,2}"_s);
    const QString timeFormat = locale.timeFormat(QLocale::ShortFormat).remove(seconds).trimmed();
    const QString arrow = u" → "_s;

    QList<CustomerTimelineRow> rows;
    rows.reserve(events.size());
    std::optional<QDate> previousDay;
    QString dayText;
    for (const TarnTimelineEvent &event : events) {
        const QDateTime local = QDateTime::fromMSecsSinceEpoch(MessagesTime::msecs(event.at).value_or(0), zone);
        const bool first = previousDay != local.date();
        if (first)
            dayText = MessagesTime::dayLabel(local, now, locale);
        previousDay = local.date();

        QString body = event.body;
        if (event.kind == "stage"_L1) {
            const qsizetype split = body.indexOf(arrow);
            if (split >= 0)
                body = stageLabel(body.left(split)) + arrow + stageLabel(body.mid(split + arrow.size()));
        }
        rows.append({ .id = event.id,
            .kind = event.kind,
            .kindLabel = kindLabel(event.kind),
            .title = event.title,
            .body = body,
            .author = event.author_name.value_or(QString()),
            .timeLabel = locale.toString(local.time(), timeFormat),
            .dayLabel = dayText,
            .firstOfDay = first });
    }
    return rows;
}

bool matches(const TarnCustomerSummary &customer, const QString &text)
{
    const QStringList words = folded(text).split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return true;
    const QString haystack = folded(customer.name + u'\n' + customer.company + u'\n' + customer.email);
    const QString phone = digits(customer.phone);
    return std::all_of(words.cbegin(), words.cend(), [&](const QString &word) {
        if (haystack.contains(word))
            return true;
        const QString wanted = digits(word);
        return !wanted.isEmpty() && wanted.size() == word.size() && phone.contains(wanted);
    });
}

QString dayText(const QString &serviceDay, const QDate &today)
{
    const QDate day = QDate::fromString(serviceDay.left(10), Qt::ISODate);
    if (!day.isValid())
        return {};
    return day.toString(day.year() == today.year() ? u"d MMM"_s : u"d MMM yyyy"_s);
}

std::optional<QString> fileRefusal(const QString &name, qint64 size)
{
    if (size > fileLimitBytes)
        return u"“%1” is larger than 10 MB, the limit for a customer's files."_s.arg(name);
    if (size == 0)
        return u"“%1” is empty."_s.arg(name);
    return std::nullopt;
}

} // namespace CustomerRules
