#include "money/NativeBankImport.h"

#include "money/NativeOutcome.h"
#include "money/TarnBooksCalls.h"
#include "service/TarnAPI.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

using namespace Qt::StringLiterals;

NativeBankImport::NativeBankImport(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{
}

QString NativeBankImport::hint()
{
    return u"CSV columns: Date, Description, Amount, optional Reference"_s + u" up to 500 rows"_s;
}

void NativeBankImport::refuse(const QString &message)
{
    m_rows.clear();
    m_status = message;
    m_refused = true;
    Q_EMIT changed();
}

void NativeBankImport::choose(const QUrl &file, const QString &bankAccountID, const QString &bankAccountName)
{
    ++m_generation;
    m_fileName = QFileInfo(file.toLocalFile()).fileName();
    m_bankID = bankAccountID;
    m_result.clear();
    m_importing = false;
    QFile chosen(file.toLocalFile());
    if (!chosen.open(QIODevice::ReadOnly)) {
        refuse(chosen.errorString());
        return;
    }
    // One byte past the limit is enough to refuse a file of any size
    // without reading it whole.
    const QByteArray bytes = chosen.read(TarnBankCSV::maxFileBytes + 1);
    try {
        const QString text = TarnBankCSV::decodeFile(bytes);
        m_rows = TarnBankCSV::parse(text);
    } catch (const TarnBankCSV::ParseError &error) {
        refuse(error.message());
        return;
    }
    m_refused = false;
    m_status = QString::number(m_rows.size()) + u" rows ready for "_s + bankAccountName;
    Q_EMIT changed();
}

void NativeBankImport::send()
{
    if (!ready())
        return;
    m_importing = true;
    Q_EMIT changed();
    importRows(m_bankID, m_rows, m_generation);
}

QCoro::Task<> NativeBankImport::importRows(QString bankID, QList<TarnBankCSV::Row> rows, int generation)
{
    const QPointer<NativeBankImport> self(this);
    auto call = [&] { return TarnBooksCalls::importBooksBankRows(m_api, bankID, rows); };
    NativeOutcome<TarnBooksImportResult> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_generation)
        co_return;
    m_importing = false;
    if (outcome.value) {
        m_rows.clear();
        m_result = u"%1 imported, %2 duplicates"_s.arg(outcome.value->imported).arg(outcome.value->duplicates);
        Q_EMIT changed();
        Q_EMIT imported();
        co_return;
    }
    m_result = outcome.error;
    Q_EMIT changed();
}
