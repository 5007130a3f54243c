#include "mail/detail/MailTree.h"

namespace TarnMailHTML::detail {

MailTree::MailTree()
{
    m_root = create(Tag::Root);
}

MailTree::~MailTree() = default;

MailNode *MailTree::create(Tag tag)
{
    if (m_used == chunkSize) {
        m_chunks.push_back(std::make_unique<MailNode[]>(chunkSize));
        m_used = 0;
    }
    MailNode *node = &m_chunks.back()[m_used++];
    node->tag = tag;
    return node;
}

} // namespace TarnMailHTML::detail
