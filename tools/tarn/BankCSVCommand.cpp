#include "BankCSVCommand.h"

#include "money/TarnBankCSV.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// A JSON string literal, escaped by Qt's own writer.
QByteArray jsonString(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray { text }).toJson(QJsonDocument::Compact);
    return array.sliced(1, array.size() - 2);
}

int failWith(const QString &message)
{
    QTextStream(stderr) << message << '\n';
    return 1;
}

} // namespace

int runBankCSV(const QStringList &args)
{
    if (args.size() != 1)
        return failWith(u"usage: tarn bank-csv FILE"_s);

    QFile file(args.first());
    if (!file.open(QIODevice::ReadOnly))
        return failWith(u"Cannot open "_s + args.first() + u": "_s + file.errorString());
    // One byte past the limit is enough to refuse an oversized file without
    // reading all of it.
    const QByteArray bytes = file.read(TarnBankCSV::maxFileBytes + 1);

    QList<TarnBankCSV::Row> rows;
    try {
        rows = TarnBankCSV::parse(TarnBankCSV::decodeFile(bytes));
    } catch (const TarnBankCSV::ParseError &error) {
        return failWith(error.message());
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
