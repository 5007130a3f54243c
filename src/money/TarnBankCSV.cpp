#include "money/TarnBankCSV.h"

#include "money/TarnLedgerDates.h"

#include <QStringDecoder>
#include <QTextBoundaryFinder>
#include <QVarLengthArray>

#include <limits>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

using Cells = QList<QString>;

[[noreturn]] void fail(const QString &message)
{
    throw TarnBankCSV::ParseError::invalid(message);
}

[[noreturn]] void failRow(qsizetype row, QLatin1StringView what)
{
    fail(u"Row "_s + QString::number(row) + u' ' + what);
}

bool isBlank(QStringView text)
{
    for (const QChar c : text) {
        if (!c.isSpace())
            return false;
    }
    return true;
}

// Quoted text with every "\r\n" and lone "\r" made "\n". A quoted stretch
// ends at a quote, so a pair never straddles two calls.
void appendUnifyingLineEnds(QString &field, QStringView text)
{
    qsizetype from = 0;
    for (qsizetype cr = text.indexOf(u'\r'); cr >= 0; cr = text.indexOf(u'\r', from)) {
        field.append(text.sliced(from, cr - from));
        field.append(u'\n');
        from = cr + 1;
        if (from < text.size() && text[from] == u'\n')
            ++from;
    }
    field.append(text.sliced(from));
}

// Fields and rows of the text. Line ends are unified on the fly: "\r\n" and a
// lone "\r" both count as "\n", inside quotes too. A quote opens a quoted
// stretch anywhere in a field, not only at its start, because bank exports
// that quote half a field exist and reading them as text loses nothing.
QList<Cells> splitRows(QStringView text)
{
    QList<Cells> rows;
    Cells row;
    QString field;
    bool inQuotes = false;

    const auto endField = [&] {
        row.append(std::move(field));
        field = QString();
    };
    const auto endRow = [&] {
        endField();
        bool blank = true;
        for (const QString &cell : std::as_const(row)) {
            if (!isBlank(cell)) {
                blank = false;
                break;
            }
        }
        if (!blank)
            rows.append(std::move(row));
        row = Cells();
    };

    const char16_t *p = text.utf16();
    const char16_t *const end = p + text.size();
    while (p < end) {
        const char16_t *const run = p;
        if (!inQuotes) {
            while (p < end && *p != u',' && *p != u'"' && *p != u'\n' && *p != u'\r')
                ++p;
            field.append(QStringView(run, p - run));
            if (p == end)
                break;
            switch (*p) {
            case u'"':
                inQuotes = true;
                ++p;
                break;
            case u',':
                endField();
                ++p;
                break;
            default:
                if (*p == u'\r' && p + 1 < end && p[1] == u'\n')
                    ++p;
                ++p;
                endRow();
                break;
            }
        } else {
            // Quoted text is most of a statement's bytes (long memos), so the
            // closing quote and any carriage return are found with Qt's
            // vectorised search rather than a character loop.
            const qsizetype quote = QStringView(p, end - p).indexOf(u'"');
            p = quote < 0 ? end : p + quote;
            appendUnifyingLineEnds(field, QStringView(run, p - run));
            if (p == end)
                break;
            if (p + 1 < end && p[1] == u'"') {
                field.append(u'"');
                p += 2;
            } else {
                inQuotes = false;
                ++p;
            }
        }
    }
    if (inQuotes)
        fail(u"The CSV has an unclosed quoted field."_s);
    endRow();
    return rows;
}

qsizetype column(const Cells &header, QLatin1StringView name)
{
    for (qsizetype i = 0; i < header.size(); ++i) {
        QString cell = header.at(i);
        cell.remove(QChar(0xFEFF));
        if (cell.trimmed().toLower() == name)
            return i;
    }
    return -1;
}

// A signed decimal integer as a date part: an optional sign and ASCII digits.
// Values are clamped far above anything the date pattern accepts.
std::optional<int> datePart(QStringView text)
{
    qsizetype at = 0;
    bool negative = false;
    if (!text.isEmpty() && (text[0] == u'+' || text[0] == u'-')) {
        negative = text[0] == u'-';
        at = 1;
    }
    if (at == text.size())
        return std::nullopt;
    int value = 0;
    for (; at < text.size(); ++at) {
        const char16_t c = text[at].unicode();
        if (c < u'0' || c > u'9')
            return std::nullopt;
        value = std::min(value * 10 + (c - u'0'), 1'000'000);
    }
    return negative ? -value : value;
}

// Month/day/year as US banks write it, rewritten "%04d-%02d-%02d" from year,
// month and day. Parts too wide (or negative) for that pattern would print
// text that can never be a wire date, so the cell is kept as it is instead:
// it holds "/" and fails the date check just the same.
QString wireDate(const QString &cell)
{
    const qsizetype first = cell.indexOf(u'/');
    if (first < 0)
        return cell;
    const qsizetype second = cell.indexOf(u'/', first + 1);
    if (second < 0 || cell.indexOf(u'/', second + 1) >= 0)
        return cell;
    const QStringView view(cell);
    const std::optional<int> month = datePart(view.first(first));
    const std::optional<int> day = datePart(view.sliced(first + 1, second - first - 1));
    const std::optional<int> year = datePart(view.sliced(second + 1));
    if (!month || !day || !year || *year < 0 || *year > 9999 || *month < 0 || *month > 99 || *day < 0 || *day > 99)
        return cell;
    const char16_t wire[10] = {
        char16_t(u'0' + *year / 1000),
        char16_t(u'0' + *year / 100 % 10),
        char16_t(u'0' + *year / 10 % 10),
        char16_t(u'0' + *year % 10),
        u'-',
        char16_t(u'0' + *month / 10),
        char16_t(u'0' + *month % 10),
        u'-',
        char16_t(u'0' + *day / 10),
        char16_t(u'0' + *day % 10),
    };
    return QStringView(wire, 10).toString();
}

// "Characters" as a person counts them: grapheme clusters, so an accented
// letter or a flag written with several code points counts once.
bool fitsCharacters(const QString &text, qsizetype limit)
{
    if (text.size() <= limit)
        return true;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1) {
        if (++count > limit)
            return false;
    }
    return true;
}

enum class Amount { Invalid, OutOfRange };

// The amount cell to cents, or why not. Digits are accumulated exactly;
// a value that does not fit in 64-bit cents is not a number this reader can
// represent (an invalid amount), anything that fits but lies beyond the bank
// limit is refused for the limit.
std::variant<qint64, Amount> cents(const QString &cell)
{
    QVarLengthArray<char16_t, 64> text;
    for (const QChar c : cell) {
        if (c != u'$' && c != u',' && c != u' ')
            text.append(c.unicode());
    }
    QStringView view(text.constData(), text.size());
    bool accounting = false;
    if (view.startsWith(u'(') && view.endsWith(u')')) {
        view = view.sliced(1, view.size() - 2);
        accounting = true;
    }
    bool minus = false;
    if (view.startsWith(u'-')) {
        minus = true;
        view = view.sliced(1);
    }
    const qsizetype point = view.indexOf(u'.');
    const QStringView whole = point < 0 ? view : view.first(point);
    const QStringView fraction = point < 0 ? QStringView() : view.sliced(point + 1);
    if (whole.isEmpty() || (point >= 0 && (fraction.isEmpty() || fraction.size() > 2)))
        return Amount::Invalid;

    quint64 magnitude = 0;
    const auto addDigit = [&magnitude](QChar c) {
        if (c.unicode() < u'0' || c.unicode() > u'9')
            return false;
        return !__builtin_mul_overflow(magnitude, quint64(10), &magnitude)
            && !__builtin_add_overflow(magnitude, quint64(c.unicode() - u'0'), &magnitude);
    };
    bool representable = true;
    for (const QChar c : whole) {
        if (c.unicode() < u'0' || c.unicode() > u'9')
            return Amount::Invalid;
        representable = representable && addDigit(c);
    }
    for (qsizetype i = 0; i < 2; ++i) {
        const QChar c = i < fraction.size() ? fraction[i] : u'0';
        if (c.unicode() < u'0' || c.unicode() > u'9')
            return Amount::Invalid;
        representable = representable && addDigit(c);
    }
    constexpr quint64 largest = quint64(std::numeric_limits<qint64>::max());
    if (!representable || magnitude > largest + (minus ? 1 : 0))
        return Amount::Invalid;

    qint64 value = minus ? qint64(0 - magnitude) : qint64(magnitude);
    // Parentheses mean money out whatever sign is written inside them.
    if (accounting && value > 0)
        value = -value;
    if (value == 0 || value < -TarnBankCSV::bankLimitCents || value > TarnBankCSV::bankLimitCents)
        return Amount::OutOfRange;
    return value;
}

} // namespace

QString TarnBankCSV::decodeFile(const QByteArray &bytes)
{
    if (bytes.size() > maxFileBytes)
        fail(u"Choose a UTF-8 CSV under 900 KB."_s);
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        fail(u"Choose a UTF-8 CSV under 900 KB."_s);
    return text;
}

QList<TarnBankCSV::Row> TarnBankCSV::parse(QStringView text)
{
    const QList<Cells> rows = splitRows(text);
    if (rows.isEmpty())
        fail(u"The CSV is empty."_s);

    const Cells &header = rows.first();
    const qsizetype dateColumn = column(header, "date"_L1);
    const qsizetype descriptionColumn = column(header, "description"_L1);
    const qsizetype amountColumn = column(header, "amount"_L1);
    const qsizetype referenceColumn = column(header, "reference"_L1);
    if (dateColumn < 0 || descriptionColumn < 0 || amountColumn < 0)
        fail(u"Bank CSV needs Date, Description, and Amount columns. Reference is optional."_s);

    const qsizetype dataRows = rows.size() - 1;
    if (dataRows < 1 || dataRows > maxRows)
        fail(u"Choose a CSV with 1\u2013500 transactions."_s);

    QList<Row> out;
    out.reserve(dataRows);
    for (qsizetype i = 1; i < rows.size(); ++i) {
        const Cells &cells = rows.at(i);
        const qsizetype number = i + 1;
        const auto cell
            = [&cells](qsizetype at) { return at >= 0 && at < cells.size() ? cells.at(at).trimmed() : QString(); };

        Row row;
        row.date = wireDate(cell(dateColumn));
        if (!TarnLedgerDates::isDay(row.date))
            failRow(number, "has an invalid date."_L1);

        row.description = cell(descriptionColumn);
        row.reference = cell(referenceColumn);
        if (row.description.isEmpty() || !fitsCharacters(row.description, maxDescription)
            || !fitsCharacters(row.reference, maxReference))
            failRow(number, "needs a description and a short reference."_L1);

        const std::variant<qint64, Amount> amount = cents(cell(amountColumn));
        if (const Amount *why = std::get_if<Amount>(&amount)) {
            failRow(number,
                *why == Amount::Invalid ? "has an invalid amount."_L1
                                        : "needs a nonzero amount within the bank limit."_L1);
        }
        row.amount = std::get<qint64>(amount);
        out.append(std::move(row));
    }
    return out;
}
