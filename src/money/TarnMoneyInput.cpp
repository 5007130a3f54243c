#include "money/TarnMoneyInput.h"

using namespace Qt::StringLiterals;

namespace {

bool isAsciiDigit(QChar c)
{
    return c.unicode() >= u'0' && c.unicode() <= u'9';
}

bool groupsThousands(QStringView text, qsizetype comma)
{
    if (comma + 3 >= text.size())
        return false;
    for (qsizetype i = comma + 1; i <= comma + 3; ++i) {
        if (!isAsciiDigit(text[i]))
            return false;
    }
    return comma + 4 == text.size() || !isAsciiDigit(text[comma + 4]);
}

} // namespace

std::optional<qint64> TarnMoneyInput::cents(QStringView text, bool allowZero)
{
    QString kept;
    kept.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'$' || c.isSpace() || (c == u',' && groupsThousands(text, i)))
            continue;
        kept.append(c);
    }

    const qsizetype point = kept.indexOf(u'.');
    const QStringView whole = point < 0 ? QStringView(kept) : QStringView(kept).first(point);
    const QStringView fraction = point < 0 ? QStringView() : QStringView(kept).sliced(point + 1);
    if (whole.size() > 10 || fraction.size() > 2)
        return std::nullopt;
    if (whole.isEmpty() && fraction.isEmpty())
        return std::nullopt;

    // Ten digits and two decimals stay below 10^12: no overflow is possible.
    qint64 value = 0;
    for (const QChar c : whole) {
        if (!isAsciiDigit(c))
            return std::nullopt;
        value = value * 10 + (c.unicode() - u'0');
    }
    for (qsizetype i = 0; i < 2; ++i) {
        const QChar c = i < fraction.size() ? fraction[i] : u'0';
        if (!isAsciiDigit(c))
            return std::nullopt;
        value = value * 10 + (c.unicode() - u'0');
    }
    if (value == 0 && !allowZero)
        return std::nullopt;
    return value;
}

QString TarnMoneyInput::text(qint64 cents)
{
    // Through the unsigned magnitude, so that the most negative value prints too.
    const quint64 magnitude = cents < 0 ? 0 - quint64(cents) : quint64(cents);
    const quint64 remainder = magnitude % 100;
    return (cents < 0 ? u"-"_s : QString()) + QString::number(magnitude / 100) + u'.'
        + (remainder < 10 ? u"0"_s : QString()) + QString::number(remainder);
}

QString TarnMoneyInput::dollars(qint64 cents)
{
    QString plain = text(cents);
    const bool negative = plain.startsWith(u'-');
    // Commas every three whole digits, counted back from the decimal point.
    const qsizetype firstDigit = negative ? 1 : 0;
    for (qsizetype at = plain.size() - 3 - 3; at > firstDigit; at -= 3)
        plain.insert(at, u',');
    return negative ? u"-$"_s + plain.mid(1) : u"$"_s + plain;
}
