#include "CommandLine.h"

#include <QTextStream>

using namespace Qt::StringLiterals;

CommandLine::CommandLine(QString name, QString synopsis, QStringList args)
    : m_name(std::move(name))
    , m_synopsis(std::move(synopsis))
    , m_args(std::move(args))
    , m_help({ u"h"_s, u"help"_s }, u"Show this help."_s)
{
    m_parser.addOption(m_help);
}

std::optional<int> CommandLine::parse()
{
    if (!m_parser.parse(QStringList { u"tarn"_s } + m_args))
        return usageError(m_parser.errorText());
    if (m_parser.isSet(m_help)) {
        QTextStream(stdout) << help();
        return 0;
    }
    return std::nullopt;
}

QString CommandLine::usage() const
{
    return u"usage: tarn "_s + m_name + (m_synopsis.isEmpty() ? QString() : u' ' + m_synopsis);
}

QString CommandLine::help() const
{
    // Qt's own text begins with a usage line built from the executable's
    // path; ours names the subcommand instead.
    const QString text = m_parser.helpText();
    return usage() + u'\n' + text.mid(text.indexOf(u'\n'));
}

int CommandLine::usageError(const QString &message) const
{
    QTextStream(stderr) << "tarn " << m_name << ": " << continuing(message) << '\n' << usage() << '\n';
    return usageExit;
}

int CommandLine::refused(const QString &message, const QString &file) const
{
    QTextStream err(stderr);
    err << "tarn " << m_name << ": ";
    if (!file.isEmpty())
        err << file << ": ";
    err << continuing(message) << '\n';
    return refusedExit;
}

QString CommandLine::continuing(const QString &sentence)
{
    static const QStringList names { u"Pilo"_s, u"Tarn"_s, u"Google"_s };
    qsizetype end = 0;
    while (end < sentence.size() && sentence.at(end).isLetter())
        ++end;
    const QStringView word = QStringView(sentence).first(end);
    if (word.isEmpty() || !word.front().isUpper() || (word.size() > 1 && word.at(1).isUpper()) || names.contains(word))
        return sentence;
    return sentence.front().toLower() + sentence.mid(1);
}
