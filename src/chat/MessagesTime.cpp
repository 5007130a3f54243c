#include "chat/MessagesTime.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 dayMs = 86'400'000;

// Days since 1970-01-01 of a proleptic Gregorian date.
qint64 daysFromCivil(qint64 y, int m, int d)
{
    y -= m <= 2 ? 1 : 0;
    const qint64 era = (y >= 0 ? y : y - 399) / 400;
    const qint64 yoe = y - era * 400;
    const qint64 doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const qint64 doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

int daysInMonth(qint64 y, int m)
{
    static constexpr int days[] = { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
    return m == 2 && leap ? 29 : days[m - 1];
}

// Reads `count` digits at `at`; -1 when any is not a digit.
int digits(QStringView text, qsizetype at, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const char16_t c = text.at(at + i).unicode();
        if (c < u'0' || c > u'9')
            return -1;
        value = value * 10 + (c - u'0');
    }
    return value;
}

} // namespace

namespace MessagesTime {

std::optional<qint64> msecs(QStringView text)
{
    // "yyyy-MM-ddTHH:mm:ss" or with a space in the middle: 19 characters.
    if (text.size() < 19 || text.at(4) != u'-' || text.at(7) != u'-' || text.at(13) != u':' || text.at(16) != u':')
        return std::nullopt;
    const int year = digits(text, 0, 4);
    const int month = digits(text, 5, 2);
    const int day = digits(text, 8, 2);
    const int hour = digits(text, 11, 2);
    const int minute = digits(text, 14, 2);
    const int second = digits(text, 17, 2);
    if (year < 0 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month) || hour < 0 || hour > 23
        || minute < 0 || minute > 59 || second < 0 || second > 59)
        return std::nullopt;
    const qint64 wall = (daysFromCivil(year, month, day) * 86'400 + hour * 3600 + minute * 60 + second) * qint64(1000);

    const QChar separator = text.at(10);
    if (separator == u' ')
        return text.size() == 19 ? std::optional(wall) : std::nullopt;
    if (separator != u'T' && separator != u't')
        return std::nullopt;

    qsizetype at = 19;
    qint64 fraction = 0;
    if (at < text.size() && text.at(at) == u'.') {
        ++at;
        const qsizetype first = at;
        qint64 scale = 100;
        while (at < text.size() && text.at(at).isDigit()) {
            fraction += (text.at(at).unicode() - u'0') * scale;
            scale /= 10;
            ++at;
        }
        if (at == first)
            return std::nullopt;
    }
    const qsizetype rest = text.size() - at;
    if (rest == 1 && (text.at(at) == u'Z' || text.at(at) == u'z'))
        return wall + fraction;
    if (rest != 6 || (text.at(at) != u'+' && text.at(at) != u'-') || text.at(at + 3) != u':')
        return std::nullopt;
    const int offsetHours = digits(text, at + 1, 2);
    const int offsetMinutes = digits(text, at + 4, 2);
    if (offsetHours < 0 || offsetHours > 23 || offsetMinutes < 0 || offsetMinutes > 59)
        return std::nullopt;
    const qint64 offset = (offsetHours * 60 + offsetMinutes) * qint64(60'000);
    return wall + fraction + (text.at(at) == u'+' ? -offset : offset);
}

std::optional<QDateTime> date(const std::optional<QString> &text)
{
    const std::optional<qint64> ms = text ? msecs(*text) : std::nullopt;
    if (!ms)
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(*ms, Qt::UTC);
}

qint64 utcOffsetMs(qint64 msecs)
{
    return qint64(QDateTime::fromMSecsSinceEpoch(msecs, Qt::LocalTime).offsetFromUtc()) * 1000;
}

qint64 dayOf(qint64 wallMsecs)
{
    return wallMsecs >= 0 ? wallMsecs / dayMs : (wallMsecs - dayMs + 1) / dayMs;
}

QString dayLabel(const QDateTime &date, const QDateTime &now, const QLocale &locale)
{
    const QDate day = date.toLocalTime().date();
    const QDate today = now.toLocalTime().date();
    if (day == today)
        return u"Today"_s;
    if (day == today.addDays(-1))
        return u"Yesterday"_s;
    return locale.toString(day, day.year() == today.year() ? u"dddd, MMMM d"_s : u"dddd, MMMM d, yyyy"_s);
}

QString timeLabel(const QDateTime &date, const QLocale &locale)
{
    // Some locales' short style (the C locale's among them) carries the
    // seconds, which no row shows. A room lays out thousands of headers, so
    // the last locale's format is kept.
    static thread_local QString lastLocale;
    static thread_local QString format;
    if (format.isEmpty() || lastLocale != locale.name()) {
        static const QRegularExpression seconds(u"[:.]?s{1,2}"_s);
        lastLocale = locale.name();
        format = locale.timeFormat(QLocale::ShortFormat).remove(seconds).trimmed();
    }
    return locale.toString(date.toLocalTime().time(), format);
}

} // namespace MessagesTime
