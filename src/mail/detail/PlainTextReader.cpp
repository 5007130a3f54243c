#include "mail/detail/PlainTextReader.h"

#include "mail/detail/LinkRules.h"
#include "mail/detail/MailRules.h"

#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail::PlainTextReader {

namespace {

bool startsQuote(QStringView line)
{
    if (line.startsWith(u'>'))
        return true;
    // Both headers need these words; most lines have neither and skip the expressions.
    if (line.contains(u"wrote:")) {
        static const QRegularExpression wrote = MailRules::compiled(u"^\\s*On\\b.*wrote:\\s*$"_s);
        if (wrote.match(line).hasMatch())
            return true;
    }
    if (line.contains(u"Original Message")) {
        static const QRegularExpression original
            = MailRules::compiled(u"^\\s*-{2,}\\s*Original Message\\s*-{2,}\\s*$"_s);
        if (original.match(line).hasMatch())
            return true;
    }
    return false;
}

// Consecutive non-empty lines form a paragraph; blank lines end paragraphs.
QList<TarnMailBlock> plainBlocks(const QList<QStringView> &lines)
{
    QList<TarnMailBlock> blocks;
    QList<TarnMailRun> runs;
    const auto flush = [&] {
        if (!runs.isEmpty())
            blocks.append(TarnMailBlock::paragraph(std::exchange(runs, {})));
    };
    const auto append = [&](const TarnMailRun &run) {
        if (!runs.isEmpty() && runs.last().style == run.style && runs.last().link == run.link)
            runs.last().text.append(run.text);
        else
            runs.append(run);
    };
    for (const QStringView line : lines) {
        if (line.trimmed().isEmpty()) {
            flush();
            continue;
        }
        if (!runs.isEmpty())
            append(TarnMailRun { u"\n"_s, {}, std::nullopt });
        for (const TarnMailRun &run : linkified(line))
            append(run);
    }
    flush();
    return blocks;
}

} // namespace

QList<TarnMailRun> linkified(QStringView text)
{
    static const QRegularExpression url
        = MailRules::compiled(u"https?://[^\\s<>\"]+"_s, QRegularExpression::CaseInsensitiveOption);
    static const QStringView trailing = u".,;:!?)]'\"";

    QList<TarnMailRun> runs;
    QString plain;
    qsizetype done = 0;
    QRegularExpressionMatchIterator it = url.globalMatch(text);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        QStringView candidate = match.capturedView();
        while (!candidate.isEmpty() && trailing.contains(candidate.back()))
            candidate.chop(1);
        const std::optional<TarnMailLink> link
            = candidate.isEmpty() ? std::nullopt : LinkRules::vetted(candidate.toString());
        if (!link)
            continue; // stays plain text
        const qsizetype start = match.capturedStart();
        plain.append(text.sliced(done, start - done));
        if (!plain.isEmpty())
            runs.append(TarnMailRun { std::exchange(plain, {}), {}, std::nullopt });
        runs.append(TarnMailRun { candidate.toString(), {}, link });
        done = start + candidate.size();
    }
    plain.append(text.sliced(done));
    if (!plain.isEmpty())
        runs.append(TarnMailRun { plain, {}, std::nullopt });
    return runs;
}

TarnMailDocument read(QStringView text, int characterLimit)
{
    TarnMailDocument document;
    characterLimit = qMax(characterLimit, 0);
    if (text.size() > characterLimit) {
        qsizetype cut = characterLimit;
        if (cut > 0 && text.at(cut - 1).isHighSurrogate())
            --cut;
        text = text.left(cut);
        document.truncated = true;
    }

    QList<QStringView> lines;
    for (QStringView line : text.split(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        lines.append(line);
    }
    qsizetype split = lines.size();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (startsQuote(lines.at(i))) {
            split = i;
            break;
        }
    }
    document.blocks = plainBlocks(lines.mid(0, split));
    document.quoted = plainBlocks(lines.mid(split));
    // As for HTML: a body that is all history still shows it.
    if (document.blocks.isEmpty())
        std::swap(document.blocks, document.quoted);
    return document;
}

} // namespace TarnMailHTML::detail::PlainTextReader
