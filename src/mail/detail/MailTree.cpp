#include "mail/detail/MailTree.h"

namespace TarnMailHTML::detail {

MailTree::MailTree()
{
    m_root = create(Tag::Root);
}

MailTree::~MailTree() = default;

MailNode *MailTree::create(Tag tag)
{
    if (m_used == m_chunkSize) {
        m_chunkSize = m_chunkSize == 0 ? firstChunk : qMin(m_chunkSize * 2, largestChunk);
        m_chunks.push_back(std::make_unique<MailNode[]>(m_chunkSize));
        m_used = 0;
    }
    MailNode *node = &m_chunks.back()[m_used++];
    node->tag = tag;
    return node;
}

} // namespace TarnMailHTML::detail
