// Character references: any text decodes, and text without "&" comes back unchanged.
#include "mail/TarnMailHTML.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(QByteArrayView(data, qsizetype(size)));
    const QString decoded = TarnMailHTML::decodeEntities(text);
    if (!text.contains(u'&') && decoded != text)
        std::abort();
    // A reference never grows: the longest replacement is two UTF-16 units for "&#x10000;".
    if (decoded.size() > text.size())
        std::abort();
    return 0;
}
