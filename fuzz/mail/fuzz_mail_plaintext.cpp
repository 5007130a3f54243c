// Plain-text bodies: quote splitting and linkification.
#include "mail/TarnMailHTML.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(QByteArrayView(data, qsizetype(size)));
    const int limit = size > 0 ? 16 + data[0] * 32 : 150000;
    const TarnMailDocument document = TarnMailHTML::parsePlainText(text, limit);
    if (document.truncated != (text.size() > limit))
        std::abort();
    (void)TarnMailHTML::plainText(document.quoted);
    for (const TarnMailRun &run : TarnMailHTML::linkified(text)) {
        if (run.link && !TarnMailHTML::safeLink(run.link->text()))
            std::abort();
    }
    return 0;
}
