#include "mail/detail/MailNode.h"

using namespace Qt::StringLiterals;

namespace TarnMailHTML::detail {

bool MailNode::hasAttribute(Attribute wanted) const
{
    for (const auto &[key, value] : attributes) {
        if (key == wanted)
            return true;
    }
    return false;
}

QString MailNode::attribute(Attribute wanted) const
{
    for (const auto &[key, value] : attributes) {
        if (key == wanted)
            return value;
    }
    return {};
}

QStringList MailNode::classes() const
{
    QStringList result;
    const QString value = attribute(Attribute::Class);
    const qsizetype n = value.size();
    qsizetype i = 0;
    while (i < n) {
        while (i < n && value.at(i).isSpace())
            ++i;
        const qsizetype begin = i;
        while (i < n && !value.at(i).isSpace())
            ++i;
        if (i > begin)
            result.append(value.mid(begin, i - begin).toLower());
    }
    return result;
}

bool MailNode::hasClass(QStringView lowerClass) const
{
    const QString value = attribute(Attribute::Class);
    if (value.isEmpty())
        return false;
    // Cheap refusal first: most elements with a class do not mention the wanted one.
    if (!value.contains(lowerClass, Qt::CaseInsensitive))
        return false;
    return classes().contains(lowerClass);
}

void MailNode::append(MailNode *child)
{
    if (lastChild)
        lastChild->next = child;
    else
        firstChild = child;
    lastChild = child;
}

} // namespace TarnMailHTML::detail
