#include "MailBlocksCommand.h"

#include "mail/TarnMailHTML.h"
#include "mail/TarnMailJSON.h"

#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

int runMailBlocks(const QStringList &args)
{
    QTextStream err(stderr);
    bool plain = false;
    bool full = false;
    QString path;
    for (const QString &arg : args) {
        if (arg == "--plain"_L1) {
            plain = true;
        } else if (arg == "--full"_L1) {
            full = true;
        } else if (arg.startsWith(u'-') && arg != "-"_L1) {
            err << "tarn mail-blocks: unknown option " << arg << '\n';
            return 2;
        } else if (path.isEmpty()) {
            path = arg;
        } else {
            err << "usage: tarn mail-blocks [--plain] [--full] FILE\n";
            return 2;
        }
    }
    if (path.isEmpty()) {
        err << "usage: tarn mail-blocks [--plain] [--full] FILE\n";
        return 2;
    }

    QFile file(path);
    const bool opened = path == "-"_L1 ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!opened) {
        err << "tarn mail-blocks: cannot read " << path << ": " << file.errorString() << '\n';
        return 1;
    }
    // fromUtf8 replaces invalid sequences, so every file reads.
    const QString body = QString::fromUtf8(file.readAll());

    const int characterLimit = full ? TarnMailHTML::fullCharacterLimit : TarnMailHTML::threadCharacterLimit;
    const int blockLimit = full ? TarnMailHTML::fullBlockLimit : TarnMailHTML::threadBlockLimit;
    const TarnMailDocument document = plain ? TarnMailHTML::parsePlainText(body, characterLimit)
                                            : TarnMailHTML::parse(body, characterLimit, blockLimit);

    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly)) {
        err << "tarn mail-blocks: cannot write the result\n";
        return 1;
    }
    out.write(TarnMailJSON::encode(document));
    out.write("\n");
    return 0;
}
