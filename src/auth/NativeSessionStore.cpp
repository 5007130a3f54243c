#include "auth/NativeSessionStore.h"

#include "auth/NativeAuthError.h"
#include "service/TarnAPIError.h"
#include "service/TarnDeleteLater.h"

#include <QCoroSignal>
#include <QStringDecoder>
#include <QTimer>
#include <qt6keychain/keychain.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// The embedded web workspace keeps its own sign-in beside ours; signing out
// of Tarn signs it out too.
const auto embeddedService = "co.halvard.pilo-tarn.kiln"_L1;
const auto embeddedAccount = "kiln_session:"_L1;

template <typename Job> TarnLaterPointer<Job> makeJob(const QString &service, const QString &key)
{
    TarnLaterPointer<Job> job(new Job(service));
    job->setAutoDelete(false);
    job->setInsecureFallback(false);
    job->setKey(key);
    return job;
}

template <typename Job> QCoro::Task<> run(Job &job)
{
    // A backend that fails at once reports `finished` from inside start();
    // starting from the event loop guarantees we are listening by then.
    QTimer::singleShot(0, &job, [&job] { job.start(); });
    co_await qCoro(&job, &QKeychain::Job::finished);
}

} // namespace

QCoro::Task<std::optional<QString>> NativeSessionStore::token()
{
    auto job = makeJob<QKeychain::ReadPasswordJob>(m_service, QString::fromLatin1(account));
    co_await run(*job);
    if (job->error() != QKeychain::NoError)
        co_return std::nullopt;
    const QByteArray data = job->binaryData();
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(data);
    if (utf8.hasError() || text.isEmpty())
        co_return std::nullopt;
    co_return text;
}

QCoro::Task<> NativeSessionStore::save(QString token)
{
    if (token.isEmpty())
        throw TarnAPIError::invalidResponse();
    // A write replaces the item's data when it exists and adds it otherwise.
    auto job = makeJob<QKeychain::WritePasswordJob>(m_service, QString::fromLatin1(account));
    job->setBinaryData(token.toUtf8());
    co_await run(*job);
    if (job->error() != QKeychain::NoError)
        throw NativeAuthError::keychain();
}

QCoro::Task<> NativeSessionStore::clear()
{
    QString service = m_service;
    QString key = QString::fromLatin1(account);
    co_await remove(std::move(service), std::move(key));
}

QCoro::Task<> NativeSessionStore::clearEmbeddedSignIn()
{
    QString service = embeddedService;
    QString key = embeddedAccount;
    co_await remove(std::move(service), std::move(key));
}

QCoro::Task<> NativeSessionStore::remove(QString service, QString key)
{
    auto job = makeJob<QKeychain::DeletePasswordJob>(service, key);
    co_await run(*job);
}
