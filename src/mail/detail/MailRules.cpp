#include "mail/detail/MailRules.h"

#include "mail/detail/MailNode.h"

#include <QRegularExpression>

#include <cstring>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail::MailRules {

namespace {

bool isEmojiScalar(char32_t c)
{
    return (c >= 0x1F000 && c <= 0x1FAFF) // pictographs, emoticons, transport, flags, supplemental
        || (c >= 0x2600 && c <= 0x27BF) // miscellaneous symbols and dingbats
        || (c >= 0x2B00 && c <= 0x2BFF) // arrows and stars such as U+2B50
        || (c >= 0x2300 && c <= 0x23FF) // watch, hourglass, keyboard
        || c == 0x3030 || c == 0x303D || c == 0x3297 || c == 0x3299;
}

} // namespace

namespace {

char lower(char c)
{
    return (c >= 'A' && c <= 'Z') ? char(c + ('a' - 'A')) : c;
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r';
}

// Lower-case ASCII with every whitespace character removed; long values are
// cut (no property read here needs more than a few words).
QByteArrayView squeezed(QByteArrayView in, char *buffer, qsizetype capacity)
{
    qsizetype n = 0;
    for (const char c : in) {
        if (isSpace(c))
            continue;
        if (n == capacity)
            break;
        buffer[n++] = lower(c);
    }
    return QByteArrayView(buffer, n);
}

// "0", "0px", "0!important", "0.0": a length of zero.
bool isZeroLength(QByteArrayView value)
{
    qsizetype i = 0;
    bool digits = false;
    while (i < value.size() && (value[i] == '0' || value[i] == '.')) {
        digits = digits || value[i] == '0';
        ++i;
    }
    return digits && (i == value.size() || !(value[i] >= '1' && value[i] <= '9'));
}

template <typename Char> std::optional<int> wholePixels(const Char *data, qsizetype size)
{
    const auto space = [](Char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r'; };
    qsizetype begin = 0;
    qsizetype end = size;
    while (begin < end && space(data[begin]))
        ++begin;
    while (end > begin && space(data[end - 1]))
        --end;
    const auto endsWith = [&](const char *suffix, qsizetype length) {
        if (end - begin < length)
            return false;
        for (qsizetype k = 0; k < length; ++k) {
            Char c = data[end - length + k];
            if (c >= 'A' && c <= 'Z')
                c = Char(c + ('a' - 'A'));
            if (c != Char(suffix[k]))
                return false;
        }
        return true;
    };
    if (endsWith("!important", 10)) {
        end -= 10;
        while (end > begin && space(data[end - 1]))
            --end;
    }
    if (endsWith("px", 2))
        end -= 2;
    if (end == begin || end - begin > 9)
        return std::nullopt;
    int value = 0;
    for (qsizetype k = begin; k < end; ++k) {
        if (data[k] < '0' || data[k] > '9')
            return std::nullopt;
        value = value * 10 + int(data[k] - '0');
    }
    return value;
}

template <qsizetype N> bool is(QByteArrayView name, const char (&literal)[N])
{
    return name.size() == N - 1 && std::memcmp(name.data(), literal, N - 1) == 0;
}

template <qsizetype N> bool startsWith(QByteArrayView value, const char (&literal)[N])
{
    return value.size() >= N - 1 && std::memcmp(value.data(), literal, N - 1) == 0;
}

} // namespace

QRegularExpression compiled(const QString &pattern, QRegularExpression::PatternOptions options)
{
    QRegularExpression expression(pattern, options);
    expression.optimize();
    return expression;
}

StyleFacts styleFacts(QByteArrayView style)
{
    StyleFacts facts;
    bool zeroHeight = false;
    bool overflowHidden = false;
    qsizetype i = 0;
    while (i < style.size()) {
        qsizetype end = style.indexOf(';', i);
        if (end < 0)
            end = style.size();
        const QByteArrayView declaration = style.sliced(i, end - i);
        i = end + 1;
        const qsizetype colon = declaration.indexOf(':');
        if (colon < 0)
            continue;
        char propertyBuffer[24];
        const QByteArrayView property = squeezed(declaration.first(colon), propertyBuffer, sizeof propertyBuffer);
        // Every property read here starts with one of these letters: the
        // colours, fonts and paddings of a template are passed over unread.
        const char first = property.isEmpty() ? 0 : property[0];
        if (first != 'd' && first != 'v' && first != 'm' && first != 'o' && first != 'h' && first != 'w' && first != 'f'
            && first != 't')
            continue;
        char valueBuffer[64];
        const QByteArrayView value = squeezed(declaration.sliced(colon + 1), valueBuffer, sizeof valueBuffer);
        if (is(property, "display")) {
            facts.hidden = facts.hidden || startsWith(value, "none");
        } else if (is(property, "visibility")) {
            facts.hidden = facts.hidden || startsWith(value, "hidden");
        } else if (is(property, "mso-hide")) {
            facts.hidden = facts.hidden || startsWith(value, "all");
        } else if (is(property, "opacity")) {
            facts.hidden = facts.hidden || is(value, "0") || is(value, "0!important");
        } else if (is(property, "overflow")) {
            overflowHidden = overflowHidden || startsWith(value, "hidden");
        } else if (is(property, "max-height")) {
            zeroHeight = zeroHeight || isZeroLength(value);
        } else if (is(property, "height")) {
            zeroHeight = zeroHeight || isZeroLength(value);
            facts.height = dimension(value);
        } else if (is(property, "width")) {
            facts.width = dimension(value);
        } else if (is(property, "font-weight")) {
            const bool heavy
                = value.size() >= 3 && value[0] >= '6' && value[0] <= '9' && value[1] == '0' && value[2] == '0';
            if (startsWith(value, "bold") || heavy)
                facts.style |= TarnMailStyle::Bold;
        } else if (is(property, "font-style")) {
            if (startsWith(value, "italic"))
                facts.style |= TarnMailStyle::Italic;
        } else if (is(property, "text-decoration") || is(property, "text-decoration-line")) {
            if (value.contains("underline"))
                facts.style |= TarnMailStyle::Underline;
            if (value.contains("line-through"))
                facts.style |= TarnMailStyle::Strikethrough;
        }
    }
    facts.hidden = facts.hidden || (zeroHeight && overflowHidden);
    return facts;
}

namespace {

template <typename Visit> void forEachToken(QByteArrayView value, Visit visit)
{
    qsizetype i = 0;
    while (i < value.size()) {
        while (i < value.size() && isSpace(value[i]))
            ++i;
        const qsizetype begin = i;
        while (i < value.size() && !isSpace(value[i]))
            ++i;
        if (i > begin) {
            char buffer[48];
            const QByteArrayView token = value.sliced(begin, i - begin);
            // Longer tokens are no class this reads, but may still name an emoji.
            visit(squeezed(token, buffer, sizeof buffer), token.size() > qsizetype(sizeof buffer));
        }
    }
}

} // namespace

quint8 classMarks(QByteArrayView value)
{
    quint8 marks = 0;
    forEachToken(value, [&](QByteArrayView token, bool cut) {
        if (!cut
            && (token == "gmail_quote" || token == "gmail_quote_container" || token == "moz-cite-prefix"
                || token == "yahoo_quoted" || token == "protonmail_quote" || token == "apple-mail-quote"))
            marks |= NodeMark::HistoryClass;
        if (!cut && (token == "gmail_signature" || token == "signature"))
            marks |= NodeMark::Signature;
        if (token.contains("emoji"))
            marks |= NodeMark::EmojiClass;
    });
    return marks;
}

quint8 idMarks(QByteArrayView value)
{
    char buffer[48];
    if (value.size() > qsizetype(sizeof buffer))
        return 0;
    qsizetype n = 0;
    for (const char c : value)
        buffer[n++] = lower(c);
    const QByteArrayView id(buffer, n);
    if (id == "divrplyfwdmsg" || id == "appendonsend" || id == "mail-editor-reference-message-container")
        return NodeMark::ReplySeparator;
    return id == "signature" ? NodeMark::Signature : 0;
}

quint8 typeMarks(QByteArrayView value)
{
    char buffer[8];
    return squeezed(value, buffer, sizeof buffer) == "cite" && value.trimmed().size() == 4 ? NodeMark::CiteType : 0;
}

std::optional<int> dimension(QStringView value)
{
    return wholePixels(value.utf16(), value.size());
}

std::optional<int> dimension(QByteArrayView value)
{
    return wholePixels(value.data(), value.size());
}

bool isEmojiText(QStringView alt)
{
    int scalars = 0;
    bool emoji = false;
    for (qsizetype i = 0; i < alt.size(); ++i) {
        char32_t c = alt.at(i).unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < alt.size() && alt.at(i + 1).isLowSurrogate()) {
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
        = { u"png"_s, u"jpeg"_s, u"jpg"_s, u"gif"_s, u"webp"_s, u"heic"_s, u"bmp"_s, u"tiff"_s };
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

} // namespace TarnMailHTML::detail::MailRules
