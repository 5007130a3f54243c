#include "mail/detail/MailNode.h"

namespace TarnMailHTML::detail {

const QString &MailNode::value() const
{
    static const QString none;
    return isValued(tag) ? static_cast<const Valued *>(this)->value : none;
}

} // namespace TarnMailHTML::detail
