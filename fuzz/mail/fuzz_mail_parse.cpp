// Whole parse of arbitrary bytes, with small limits so that they are hit often,
// then every read-only walk of the result.
#include "mail/TarnMailHTML.h"
#include "mail/TarnMailJSON.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView bytes(data, qsizetype(size));
    const int characterLimit = size > 0 ? 64 + data[0] * 64 : 150000;
    const int blockLimit = size > 1 ? 4 + data[1] : 4000;

    const TarnMailDocument document = TarnMailHTML::parseUTF8(bytes, characterLimit, blockLimit);
    if (document.blockedTrackers < 0 || (document.blocks.isEmpty() && !document.quoted.isEmpty()))
        std::abort();
    (void)TarnMailHTML::plainText(document.blocks);
    (void)TarnMailHTML::segments(document.blocks);
    (void)document.cidReferences();
    (void)document.remoteImageURLs();
    (void)TarnMailJSON::encode(document);

    const TarnMailDocument again = TarnMailHTML::parse(QString::fromUtf8(bytes), characterLimit, blockLimit);
    if (!(again == document)) // the UTF-8 and string entries must agree
        std::abort();
    return 0;
}
