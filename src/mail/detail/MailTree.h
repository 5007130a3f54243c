#pragma once

#include "mail/detail/MailNode.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace TarnMailHTML::detail {

// Owns every node of one parse, packed into chunks of memory and released at
// once: destroying a tree never recurses, however deep it is.
class MailTree {
public:
    MailTree();
    MailTree(const MailTree &) = delete;
    MailTree &operator=(const MailTree &) = delete;
    MailTree(MailTree &&) = default;
    MailTree &operator=(MailTree &&) = default;
    ~MailTree();

    [[nodiscard]] MailNode *root() const { return m_root; }
    // A MailNode, or a MailNode::Valued for the tags that carry a value.
    [[nodiscard]] MailNode *create(Tag tag);

private:
    // The first nodes come in small chunks, so that a short mail wastes little;
    // past them chunks double, so that a long one costs few allocations.
    static constexpr std::size_t smallChunk = 512;
    static constexpr std::size_t smallChunks = 8;
    static constexpr std::size_t largestChunk = 32768;
    // Raw storage: nodes of both sizes, one after another.
    struct Chunk {
        std::unique_ptr<std::byte[]> storage;
        std::size_t size = 0;
        std::size_t used = 0;
    };
    std::vector<Chunk> m_chunks;
    MailNode *m_root = nullptr;
};

} // namespace TarnMailHTML::detail
