#include "BankCSVCommand.h"

#include "money/TarnBankCSV.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

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

    QJsonArray out;
    for (const TarnBankCSV::Row &row : std::as_const(rows)) {
        out.append(QJsonObject{
            {u"date"_s, row.date},
            {u"description"_s, row.description},
            {u"amount"_s, row.amount},
            {u"reference"_s, row.reference},
        });
    }
    const QByteArray json = QJsonDocument(QJsonObject{{u"rows"_s, out}}).toJson(QJsonDocument::Compact);
    std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
    std::fputc('\n', stdout);
    return 0;
}
