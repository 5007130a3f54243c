#include "mail/detail/MailEntities.h"

#include <QHash>

#include <array>
#include <optional>

namespace TarnMailHTML::detail::MailEntities {

namespace {

struct NamedEntity {
    const char16_t *name;
    char16_t value;
};

// The named references mail actually uses, with their standard values.
// clang-format off
constexpr NamedEntity namedEntities[] = {
    {u"amp", 0x26}, {u"lt", 0x3C}, {u"gt", 0x3E}, {u"quot", 0x22}, {u"apos", 0x27}, {u"nbsp", 0xA0},
    {u"copy", 0xA9}, {u"reg", 0xAE}, {u"trade", 0x2122}, {u"hellip", 0x2026}, {u"mdash", 0x2014},
    {u"ndash", 0x2013}, {u"lsquo", 0x2018}, {u"rsquo", 0x2019}, {u"sbquo", 0x201A}, {u"ldquo", 0x201C},
    {u"rdquo", 0x201D}, {u"bdquo", 0x201E}, {u"bull", 0x2022}, {u"middot", 0xB7}, {u"laquo", 0xAB},
    {u"raquo", 0xBB}, {u"lsaquo", 0x2039}, {u"rsaquo", 0x203A}, {u"euro", 0x20AC}, {u"pound", 0xA3},
    {u"yen", 0xA5}, {u"cent", 0xA2}, {u"curren", 0xA4}, {u"deg", 0xB0}, {u"plusmn", 0xB1}, {u"times", 0xD7},
    {u"divide", 0xF7}, {u"para", 0xB6}, {u"sect", 0xA7}, {u"frac12", 0xBD}, {u"frac14", 0xBC},
    {u"frac34", 0xBE}, {u"sup1", 0xB9}, {u"sup2", 0xB2}, {u"sup3", 0xB3}, {u"micro", 0xB5}, {u"ordf", 0xAA},
    {u"ordm", 0xBA}, {u"not", 0xAC}, {u"iexcl", 0xA1}, {u"iquest", 0xBF}, {u"dagger", 0x2020},
    {u"Dagger", 0x2021}, {u"permil", 0x2030}, {u"prime", 0x2032}, {u"Prime", 0x2033}, {u"larr", 0x2190},
    {u"rarr", 0x2192}, {u"uarr", 0x2191}, {u"darr", 0x2193}, {u"harr", 0x2194}, {u"lArr", 0x21D0},
    {u"rArr", 0x21D2}, {u"hearts", 0x2665}, {u"star", 0x2606}, {u"check", 0x2713}, {u"minus", 0x2212},
    {u"le", 0x2264}, {u"ge", 0x2265}, {u"ne", 0x2260}, {u"infin", 0x221E}, {u"ensp", 0x2002},
    {u"emsp", 0x2003}, {u"thinsp", 0x2009}, {u"zwnj", 0x200C}, {u"zwj", 0x200D}, {u"shy", 0xAD},
    {u"lrm", 0x200E}, {u"rlm", 0x200F}, {u"aacute", 0xE1}, {u"agrave", 0xE0}, {u"acirc", 0xE2},
    {u"auml", 0xE4}, {u"atilde", 0xE3}, {u"aring", 0xE5}, {u"aelig", 0xE6}, {u"ccedil", 0xE7},
    {u"eacute", 0xE9}, {u"egrave", 0xE8}, {u"ecirc", 0xEA}, {u"euml", 0xEB}, {u"iacute", 0xED},
    {u"igrave", 0xEC}, {u"icirc", 0xEE}, {u"iuml", 0xEF}, {u"ntilde", 0xF1}, {u"oacute", 0xF3},
    {u"ograve", 0xF2}, {u"ocirc", 0xF4}, {u"ouml", 0xF6}, {u"otilde", 0xF5}, {u"oslash", 0xF8},
    {u"uacute", 0xFA}, {u"ugrave", 0xF9}, {u"ucirc", 0xFB}, {u"uuml", 0xFC}, {u"yacute", 0xFD},
    {u"yuml", 0xFF}, {u"szlig", 0xDF}, {u"Aacute", 0xC1}, {u"Agrave", 0xC0}, {u"Acirc", 0xC2},
    {u"Auml", 0xC4}, {u"Atilde", 0xC3}, {u"Aring", 0xC5}, {u"AElig", 0xC6}, {u"Ccedil", 0xC7},
    {u"Eacute", 0xC9}, {u"Egrave", 0xC8}, {u"Ecirc", 0xCA}, {u"Euml", 0xCB}, {u"Iacute", 0xCD},
    {u"Ntilde", 0xD1}, {u"Oacute", 0xD3}, {u"Ouml", 0xD6}, {u"Oslash", 0xD8}, {u"Uacute", 0xDA},
    {u"Uuml", 0xDC}, {u"oelig", 0x153}, {u"OElig", 0x152}, {u"scaron", 0x161}, {u"Scaron", 0x160},
    {u"fnof", 0x192}, {u"circ", 0x2C6}, {u"tilde", 0x2DC},
};
// clang-format on
static_assert(std::size(namedEntities) == 131);

const QHash<QStringView, char16_t> &entityTable()
{
    static const QHash<QStringView, char16_t> table = [] {
        QHash<QStringView, char16_t> t;
        t.reserve(qsizetype(std::size(namedEntities)));
        for (const NamedEntity &e : namedEntities)
            t.insert(QStringView(e.name), e.value);
        return t;
    }();
    return table;
}

// Accepted without the closing semicolon, as old mail writes them.
bool isLegacyName(QStringView name)
{
    return name == u"amp" || name == u"lt" || name == u"gt" || name == u"quot" || name == u"nbsp" || name == u"copy"
        || name == u"reg";
}

// Numeric references 0x80...0x9F name Windows-1252 characters in real mail.
constexpr std::array<char16_t, 32> windows1252 = { 0x20AC, 0x81, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6,
    0x2030, 0x0160, 0x2039, 0x0152, 0x8D, 0x017D, 0x8F, 0x90, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D, 0x017E, 0x0178 };

bool isEntityStop(QChar c)
{
    return c == u';' || c == u'&' || c.isSpace();
}

// The scalar a numeric reference names, or nothing when its digits do not parse.
std::optional<char32_t> numericValue(QStringView digits)
{
    int base = 10;
    if (digits.startsWith(u'x') || digits.startsWith(u'X')) {
        base = 16;
        digits = digits.sliced(1);
    }
    if (digits.isEmpty())
        return std::nullopt;
    quint64 value = 0;
    for (const QChar c : digits) {
        int digit = -1;
        const char16_t u = c.unicode();
        if (u >= '0' && u <= '9')
            digit = u - '0';
        else if (base == 16 && u >= 'a' && u <= 'f')
            digit = u - 'a' + 10;
        else if (base == 16 && u >= 'A' && u <= 'F')
            digit = u - 'A' + 10;
        if (digit < 0)
            return std::nullopt;
        // Past 32 bits the value is out of range whatever follows.
        value = qMin<quint64>(value * quint64(base) + quint64(digit), 0x1'0000'0000ULL);
    }
    if (value >= 0x80 && value <= 0x9F)
        return windows1252[value - 0x80];
    if (value == 0 || (value >= 0xD800 && value <= 0xDFFF) || value >= 0x110000)
        return char32_t(0xFFFD);
    return char32_t(value);
}

} // namespace

QString decoded(const QString &text)
{
    const qsizetype first = text.indexOf(u'&');
    if (first < 0)
        return text;

    constexpr qsizetype lookahead = 32;
    const qsizetype n = text.size();
    QString out;
    out.reserve(n);
    out.append(QStringView(text).left(first));
    qsizetype i = first;
    while (i < n) {
        const qsizetype amp = text.indexOf(u'&', i);
        if (amp < 0) {
            out.append(QStringView(text).sliced(i));
            break;
        }
        out.append(QStringView(text).sliced(i, amp - i));
        qsizetype stop = amp + 1;
        const qsizetype limit = qMin(n, amp + 1 + lookahead);
        while (stop < limit && !isEntityStop(text.at(stop)))
            ++stop;
        // The name must end at a stop character or at the end of the text.
        if (stop == limit && limit < n) {
            out.append(u'&');
            i = amp + 1;
            continue;
        }
        const QStringView name = QStringView(text).sliced(amp + 1, stop - amp - 1);
        const bool semicolon = stop < n && text.at(stop) == u';';
        const qsizetype resume = semicolon ? stop + 1 : stop;

        if (name.startsWith(u'#')) {
            if (const std::optional<char32_t> value = numericValue(name.sliced(1))) {
                if (QChar::requiresSurrogates(*value)) {
                    out.append(QChar(QChar::highSurrogate(*value)));
                    out.append(QChar(QChar::lowSurrogate(*value)));
                } else {
                    out.append(QChar(char16_t(*value)));
                }
                i = resume;
                continue;
            }
        } else if (!name.isEmpty()) {
            const auto found = entityTable().constFind(name);
            if (found != entityTable().cend() && (semicolon || isLegacyName(name))) {
                out.append(QChar(*found));
                i = resume;
                continue;
            }
        }
        out.append(u'&');
        i = amp + 1;
    }
    return out;
}

} // namespace TarnMailHTML::detail::MailEntities
