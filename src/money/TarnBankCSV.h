#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

#include <exception>

// The bank statement reader: a UTF-8 CSV with the columns Date, Description,
// Amount and an optional Reference becomes the rows the books import. A file
// is read entirely or refused with one message naming the first bad row; no
// partial statement ever reaches the import.
namespace TarnBankCSV {

inline constexpr qsizetype maxFileBytes = 900'000;
inline constexpr qsizetype maxRows = 500;
inline constexpr qsizetype maxDescription = 500;
inline constexpr qsizetype maxReference = 120;
inline constexpr qint64 bankLimitCents = 100'000'000'000;

// One statement line ready for import: money in is positive, money out
// negative, never zero.
struct Row {
    QString date;
    QString description;
    qint64 amount = 0;
    QString reference;

    friend bool operator==(const Row &, const Row &) = default;
};

// The reader's only failure. The message is the whole user-facing text, shown
// as it stands in place of the row count.
class ParseError : public std::exception {
public:
    [[nodiscard]] static ParseError invalid(const QString &message) { return ParseError(message); }

    [[nodiscard]] const QString &message() const { return m_message; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    explicit ParseError(const QString &message)
        : m_message(message)
        , m_utf8(message.toUtf8())
    {
    }

    QString m_message;
    QByteArray m_utf8;
};

// The chosen file as bytes, checked before anything is parsed: at most
// maxFileBytes and valid UTF-8, else ParseError. A leading byte-order mark is
// dropped. Returns the decoded text for parse.
[[nodiscard]] QString decodeFile(const QByteArray &bytes);

// The whole decoded file to its rows in file order; throws ParseError. Pure,
// safe on any thread.
[[nodiscard]] QList<Row> parse(QStringView text);

} // namespace TarnBankCSV
