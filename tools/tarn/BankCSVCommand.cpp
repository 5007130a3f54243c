#include "BankCSVCommand.h"

#include "CommandLine.h"
#include "money/TarnBankCSV.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// A JSON string literal, escaped by Qt's own writer.
QByteArray jsonString(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray { text }).toJson(QJsonDocument::Compact);
    return array.sliced(1, array.size() - 2);
}

} // namespace

int runBankCSV(CommandLine &line)
{
    line.parser().setApplicationDescription(u"Checks a bank statement exactly as the import does and prints its "
                                            u"rows as JSON, or the message the import would show."_s);
    line.parser().addPositionalArgument(u"FILE"_s, u"The statement, a CSV file."_s);
    if (const std::optional<int> done = line.parse())
        return *done;
    if (line.positional().size() != 1)
        return line.usageError(u"give one statement file"_s);

    const QString path = line.positional().first();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return line.refused(u"cannot open it: "_s + file.errorString(), path);
    // One byte past the limit is enough to refuse an oversized file without
    // reading all of it.
    const QByteArray bytes = file.read(TarnBankCSV::maxFileBytes + 1);

    QList<TarnBankCSV::Row> rows;
    try {
        rows = TarnBankCSV::parse(TarnBankCSV::decodeFile(bytes));
    } catch (const TarnBankCSV::ParseError &error) {
        return line.refused(error.message(), path);
    }

    // Written by hand so that the keys keep the import's order (QJsonObject
    // would sort them).
    QByteArray json = "{\"rows\":[";
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const TarnBankCSV::Row &row = rows.at(i);
        if (i > 0)
            json += ',';
        json += "{\"date\":" + jsonString(row.date) + ",\"description\":" + jsonString(row.description)
            + ",\"amount\":" + QByteArray::number(row.amount) + ",\"reference\":" + jsonString(row.reference) + '}';
    }
    json += "]}";
    std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
    std::fputc('\n', stdout);
    return 0;
}
