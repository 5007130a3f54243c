#include "mail/detail/MailNode.h"

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

void MailNode::append(MailNode *child)
{
    if (lastChild)
        lastChild->next = child;
    else
        firstChild = child;
    lastChild = child;
}

} // namespace TarnMailHTML::detail
