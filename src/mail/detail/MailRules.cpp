#include "mail/detail/MailRules.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail::MailRules {

namespace {

QRegularExpression compiled(const QString &pattern, QRegularExpression::PatternOptions options = {})
{
    // Callers keep the result in a function-local static, so each is compiled
    // once; copies share the compiled pattern.
    QRegularExpression expression(pattern, options);
    expression.optimize();
    return expression;
}

bool isEmojiScalar(char32_t c)
{
    return (c >= 0x1F000 && c <= 0x1FAFF) // pictographs, emoticons, transport, flags, supplemental
        || (c >= 0x2600 && c <= 0x27BF)   // miscellaneous symbols and dingbats
        || (c >= 0x2B00 && c <= 0x2BFF)   // arrows and stars such as U+2B50
        || (c >= 0x2300 && c <= 0x23FF)   // watch, hourglass, keyboard
        || c == 0x3030 || c == 0x303D || c == 0x3297 || c == 0x3299;
}

} // namespace

TarnMailStyle inlineStyle(const QString &style)
{
    TarnMailStyle result;
    if (style.isEmpty())
        return result;
    // The expressions only run where their property is mentioned at all.
    if (style.contains("font-weight:"_L1)) {
        static const QRegularExpression bold = compiled(u"font-weight:(bold|bolder|[6-9]00)"_s);
        if (bold.match(style).hasMatch())
            result |= TarnMailStyle::Bold;
    }
    if (style.contains("font-style:italic"_L1))
        result |= TarnMailStyle::Italic;
    if (style.contains("text-decoration"_L1)) {
        static const QRegularExpression underline = compiled(u"text-decoration(-line)?:[^;]*underline"_s);
        static const QRegularExpression through = compiled(u"text-decoration(-line)?:[^;]*line-through"_s);
        if (underline.match(style).hasMatch())
            result |= TarnMailStyle::Underline;
        if (through.match(style).hasMatch())
            result |= TarnMailStyle::Strikethrough;
    }
    return result;
}

std::optional<int> dimension(QStringView value)
{
    value = value.trimmed();
    if (value.endsWith("!important"_L1, Qt::CaseInsensitive))
        value = value.chopped(10).trimmed();
    if (value.endsWith("px"_L1, Qt::CaseInsensitive))
        value = value.chopped(2).trimmed();
    if (value.isEmpty() || value.size() > 9)
        return std::nullopt;
    int result = 0;
    for (const QChar c : value) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
        result = result * 10 + (c.unicode() - u'0');
    }
    return result;
}

std::optional<int> styleDimension(const QString &style, QLatin1StringView property)
{
    qsizetype from = 0;
    while (true) {
        const qsizetype at = style.indexOf(property, from);
        if (at < 0)
            return std::nullopt;
        from = at + property.size();
        // "max-width:" and "line-height:" name other properties.
        const bool starts = at == 0 || style.at(at - 1) == u';' || style.at(at - 1) == u'{';
        if (!starts || from >= style.size() || style.at(from) != u':')
            continue;
        const qsizetype valueStart = from + 1;
        qsizetype valueEnd = style.indexOf(u';', valueStart);
        if (valueEnd < 0)
            valueEnd = style.size();
        return dimension(QStringView(style).sliced(valueStart, valueEnd - valueStart));
    }
}

bool isEmojiText(QStringView alt)
{
    int scalars = 0;
    bool emoji = false;
    for (qsizetype i = 0; i < alt.size(); ++i) {
        char32_t c = alt.at(i).unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < alt.size() && alt.at(i + 1).isLowSurrogate())
        {
            c = QChar::surrogateToUcs4(alt.at(i), alt.at(i + 1));
            ++i;
        }
        if (++scalars > 4)
            return false;
        emoji = emoji || isEmojiScalar(c);
    }
    return scalars >= 1 && emoji;
}

bool isSpacerSource(const QString &source)
{
    static const QRegularExpression spacer
        = compiled(u"(spacer|blank|transparent|clear)\\.(gif|png)"_s, QRegularExpression::CaseInsensitiveOption);
    return spacer.match(source).hasMatch();
}

std::optional<QByteArray> decodeDataImage(QStringView source)
{
    static constexpr qsizetype maxPayload = 3000000;
    static constexpr QLatin1StringView prefix("data:image/");
    if (!source.startsWith(prefix, Qt::CaseInsensitive))
        return std::nullopt;
    const qsizetype comma = source.indexOf(u',');
    if (comma < 0)
        return std::nullopt;
    const QString header = source.sliced(prefix.size(), comma - prefix.size()).toString().toLower();
    if (!header.endsWith(";base64"_L1))
        return std::nullopt;
    static const QStringList formats
        = {u"png"_s, u"jpeg"_s, u"jpg"_s, u"gif"_s, u"webp"_s, u"heic"_s, u"bmp"_s, u"tiff"_s};
    if (!formats.contains(QStringView(header).left(header.indexOf(u';'))))
        return std::nullopt;

    const QStringView payload = source.sliced(comma + 1);
    QByteArray ascii;
    ascii.reserve(qMin(payload.size(), maxPayload));
    for (const QChar c : payload) {
        if (c.isSpace())
            continue;
        if (ascii.size() == maxPayload)
            return std::nullopt;
        // Anything outside Latin-1 is not base64; fromBase64 skips what it does not know.
        ascii.append(c.unicode() < 0x80 ? char(c.unicode()) : '*');
    }
    QByteArray bytes = QByteArray::fromBase64(ascii);
    if (bytes.isEmpty())
        return std::nullopt;
    return bytes;
}

QList<TarnMailRun> trimmed(QList<TarnMailRun> runs)
{
    while (!runs.isEmpty()) {
        QString &text = runs.first().text;
        qsizetype i = 0;
        while (i < text.size() && text.at(i).isSpace())
            ++i;
        if (i == text.size()) {
            runs.removeFirst();
            continue;
        }
        if (i > 0)
            text.remove(0, i);
        break;
    }
    while (!runs.isEmpty()) {
        QString &text = runs.last().text;
        qsizetype end = text.size();
        while (end > 0 && text.at(end - 1).isSpace())
            --end;
        if (end == 0) {
            runs.removeLast();
            continue;
        }
        text.truncate(end);
        break;
    }
    return runs;
}

bool isInvisible(char16_t c)
{
    switch (c) {
    case 0x200B:
    case 0x200C:
    case 0x200D:
    case 0x2060:
    case 0xFEFF:
    case 0x00AD:
    case 0x034F:
    case 0x200E:
    case 0x200F:
        return true;
    default:
        return false;
    }
}

} // namespace TarnMailHTML::detail::MailRules
