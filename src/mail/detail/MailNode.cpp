#include "mail/detail/MailNode.h"

namespace TarnMailHTML::detail {

void MailNode::append(MailNode *child)
{
    if (lastChild)
        lastChild->next = child;
    else
        firstChild = child;
    lastChild = child;
}

} // namespace TarnMailHTML::detail
