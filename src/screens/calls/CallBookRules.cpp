#include "screens/calls/CallBookRules.h"

#include <QHash>
#include <QRegularExpression>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

// A number as stored and without its spaces, so either form is found.
QString spacedAndBare(const QString &number)
{
    return number + u' ' + QString(number).remove(u' ');
}

bool containsEveryWord(const QStringList &fields, const QString &search)
{
    const QString haystack = fields.join(u'\n');
    const QStringList words = search.split(u' ', Qt::SkipEmptyParts);
    return std::all_of(words.begin(), words.end(),
        [&haystack](const QString &word) { return haystack.contains(word, Qt::CaseInsensitive); });
}

} // namespace

namespace CallBookRules {

const QList<Mode> &modes()
{
    static const QList<Mode> all {
        { u"phone-first"_s, u"Ring my phone first"_s, u"Your phone rings; pick up and the customer's rings."_s },
        { u"computer"_s, u"Call from this computer"_s, u"Talk through this computer's microphone and speakers."_s },
    };
    return all;
}

bool isMode(const QString &key)
{
    return std::any_of(modes().begin(), modes().end(), [&key](const Mode &mode) { return mode.key == key; });
}

QString dialledNumber(const QString &typed)
{
    static const QRegularExpression spacing(u"[\\s().-]"_s);
    static const QRegularExpression valid(u"^\\+?[0-9]{7,15}$"_s);
    QString number = typed.trimmed();
    number.remove(spacing);
    if (number.startsWith("00"_L1))
        number = u'+' + number.mid(2);
    return valid.match(number).hasMatch() ? number : QString();
}

bool inFilter(const TarnCall &call, const QString &filter)
{
    if (filter == "in"_L1 || filter == "out"_L1)
        return call.direction == filter;
    if (filter == "missed"_L1)
        return call.direction == "in"_L1 && (call.outcome == "missed"_L1 || call.outcome == "voicemail"_L1);
    return true;
}

bool matchesSearch(const TarnCall &call, const QString &search)
{
    return containsEveryWord(
        { call.client_name.value_or(QString()), spacedAndBare(call.number), call.person_name, call.notes }, search);
}

QString durationLabel(qint64 seconds)
{
    const qint64 s = std::max<qint64>(seconds, 0);
    const QString tail
        = u"%1:%2"_s.arg((s / 60) % 60, s >= 3600 ? 2 : 1, 10, QChar(u'0')).arg(s % 60, 2, 10, QChar(u'0'));
    return s >= 3600 ? QString::number(s / 3600) + u':' + tail : tail;
}

QString startedLabel(const QString &startedAt, const QDateTime &now)
{
    const QDateTime at = QDateTime::fromString(startedAt, Qt::ISODateWithMs).toTimeZone(now.timeZone());
    if (!at.isValid())
        return {};
    const qint64 days = at.date().daysTo(now.date());
    const QString time = at.toString(u"HH:mm"_s);
    if (days == 0)
        return time;
    if (days == 1)
        return u"Yesterday "_s + time;
    if (days > 1 && days < 7)
        return at.toString(u"ddd "_s) + time;
    return at.toString(u"d MMM"_s);
}

QString partyOf(const TarnCall &call)
{
    return call.client_name.value_or(QString()).isEmpty() ? call.number : *call.client_name;
}

QString leadStatusLabel(const QString &status)
{
    static const QHash<QString, QString> labels { { u"new"_s, u"New"_s }, { u"contacted"_s, u"Contacted"_s },
        { u"qualified"_s, u"Qualified"_s }, { u"lost"_s, u"Lost"_s } };
    return labels.value(status, status);
}

bool leadMatchesSearch(const TarnSalesLead &lead, const QString &search)
{
    return containsEveryWord({ lead.name, lead.interest, lead.source, lead.owner_name.value_or(QString()),
                                 spacedAndBare(lead.phone.value_or(QString())) },
        search);
}

} // namespace CallBookRules
