#include "mail/MailParse.h"

#include "mail/TarnMailHTML.h"

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

} // namespace MailParse
