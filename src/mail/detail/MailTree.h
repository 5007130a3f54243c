#pragma once

#include "mail/detail/MailNode.h"

#include <memory>
#include <vector>

namespace TarnMailHTML::detail {

// Owns every node of one parse, allocated in fixed-size chunks and released at
// once: destroying a tree never recurses, however deep it is.
class MailTree
{
public:
    MailTree();
    MailTree(const MailTree &) = delete;
    MailTree &operator=(const MailTree &) = delete;
    MailTree(MailTree &&) = default;
    MailTree &operator=(MailTree &&) = default;
    ~MailTree();

    [[nodiscard]] MailNode *root() const { return m_root; }
    [[nodiscard]] MailNode *create(Tag tag);

private:
    // Chunks grow from small to large, so that a short mail costs little.
    static constexpr size_t firstChunk = 16;
    static constexpr size_t largestChunk = 256;
    // Raw storage: only the nodes handed out are ever constructed.
    struct Chunk
    {
        std::unique_ptr<std::byte[]> storage;
        size_t size = 0;
    };
    std::vector<Chunk> m_chunks;
    size_t m_chunkSize = 0;
    size_t m_used = 0;
    MailNode *m_root = nullptr;
};

} // namespace TarnMailHTML::detail
