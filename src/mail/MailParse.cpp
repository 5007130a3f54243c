#include "mail/MailParse.h"

#include "mail/TarnMailHTML.h"

#include <QPromise>
#include <QThreadPool>

#include <memory>

namespace MailParse {

bool usesHTML(const MailParseInput &input)
{
    return input.html && !input.html->trimmed().isEmpty();
}

TarnMailDocument document(const MailParseInput &input, bool full)
{
    const int characters = full ? TarnMailHTML::fullCharacterLimit : TarnMailHTML::threadCharacterLimit;
    if (usesHTML(input))
        return TarnMailHTML::parse(
            *input.html, characters, full ? TarnMailHTML::fullBlockLimit : TarnMailHTML::threadBlockLimit);
    // A message with neither says what its snippet says.
    return TarnMailHTML::parsePlainText(input.text.trimmed().isEmpty() ? input.snippet : input.text, characters);
}

QFuture<TarnMailDocument> documentOnPool(const MailParseInput &input, bool full)
{
    // Shared because the pool copies the function it runs.
    auto promise = std::make_shared<QPromise<TarnMailDocument>>();
    QFuture<TarnMailDocument> future = promise->future();
    promise->start();
    QThreadPool::globalInstance()->start([promise, input, full] {
        promise->addResult(document(input, full));
        promise->finish();
    });
    return future;
}

} // namespace MailParse
