#include "MailBlocksCommand.h"

#include "CommandLine.h"
#include "mail/TarnMailHTML.h"
#include "mail/TarnMailJSON.h"

#include <QFile>

using namespace Qt::StringLiterals;

int runMailBlocks(CommandLine &line)
{
    QCommandLineParser &parser = line.parser();
    parser.setApplicationDescription(u"Prints a mail body as the mail views draw it: the app's native blocks, "
                                     u"in JSON."_s);
    const QCommandLineOption plain(u"plain"_s, u"Read the body as plain text rather than HTML."_s);
    const QCommandLineOption full(u"full"_s, u"Use the limits of a message opened in full, not of a thread."_s);
    parser.addOption(plain);
    parser.addOption(full);
    parser.addPositionalArgument(u"FILE"_s, u"The body, in HTML or plain text; - reads standard input."_s);
    if (const std::optional<int> done = line.parse())
        return *done;
    if (line.positional().size() != 1)
        return line.usageError(u"give one mail body file"_s);

    const QString path = line.positional().first();
    const bool fromInput = path == "-"_L1;
    const QString name = fromInput ? u"standard input"_s : path;
    QFile file(path);
    if (!(fromInput ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly)))
        return line.refused(u"cannot read it: "_s + file.errorString(), name);
    const QByteArray bytes = file.readAll();
    // A mail body never holds NUL; a file that does is an attachment or a
    // program, whose "blocks" would only be noise.
    if (bytes.contains('\0'))
        return line.refused(u"not text (it holds NUL bytes); give a mail body in HTML or plain text"_s, name);
    // fromUtf8 replaces invalid sequences, so every text file reads.
    const QString body = QString::fromUtf8(bytes);

    const bool whole = parser.isSet(full);
    const int characterLimit = whole ? TarnMailHTML::fullCharacterLimit : TarnMailHTML::threadCharacterLimit;
    const int blockLimit = whole ? TarnMailHTML::fullBlockLimit : TarnMailHTML::threadBlockLimit;
    const TarnMailDocument document = parser.isSet(plain) ? TarnMailHTML::parsePlainText(body, characterLimit)
                                                          : TarnMailHTML::parse(body, characterLimit, blockLimit);

    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly))
        return line.refused(u"cannot write the result"_s);
    out.write(TarnMailJSON::encode(document));
    out.write("\n");
    return 0;
}
