#include "money/TarnBankCSV.h"

#include "money/TarnLedgerDates.h"

#include <QStringDecoder>
#include <QTextBoundaryFinder>

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
            while (p < end && *p != u'"' && *p != u'\r')
                ++p;
            field.append(QStringView(run, p - run));
            if (p == end)
                break;
            if (*p == u'\r') {
                field.append(u'\n');
                if (p + 1 < end && p[1] == u'\n')
                    ++p;
                ++p;
            } else if (p + 1 < end && p[1] == u'"') {
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
// Large values are clamped, which keeps them too wide for the date pattern.
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

// Month/day/year as the US banks write it, rewritten to the wire form.
QString wireDate(const QString &cell)
{
    const QList<QStringView> parts = QStringView(cell).split(u'/');
    if (parts.size() != 3)
        return cell;
    const std::optional<int> month = datePart(parts[0]);
    const std::optional<int> day = datePart(parts[1]);
    const std::optional<int> year = datePart(parts[2]);
    if (!month || !day || !year)
        return cell;
    return QString::asprintf("%04d-%02d-%02d", *year, *month, *day);
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
    QString text;
    text.reserve(cell.size());
    for (const QChar c : cell) {
        if (c != u'$' && c != u',' && c != u' ')
            text.append(c);
    }
    QStringView view(text);
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
        const auto cell = [&cells](qsizetype at) {
            return at >= 0 && at < cells.size() ? cells.at(at).trimmed() : QString();
        };

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
            failRow(number, *why == Amount::Invalid ? "has an invalid amount."_L1
                                                    : "needs a nonzero amount within the bank limit."_L1);
        }
        row.amount = std::get<qint64>(amount);
        out.append(std::move(row));
    }
    return out;
}
