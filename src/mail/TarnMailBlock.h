#pragma once

#include "mail/TarnMailRun.h"

#include <QList>
#include <QString>

#include <memory>
#include <variant>

struct TarnMailImage;
struct TarnMailTable;

// One block of a mail as the mail views draw it. A tagged value: `kind()` tells
// which accessors carry meaning; the others return empty values.
class TarnMailBlock {
public:
    enum class Kind : quint8 {
        Paragraph,
        Heading,
        List,
        Quote,
        Preformatted,
        Table,
        Image,
        Signature,
        Rule,
    };

    [[nodiscard]] static TarnMailBlock paragraph(QList<TarnMailRun> runs);
    [[nodiscard]] static TarnMailBlock heading(int level, QList<TarnMailRun> runs);
    [[nodiscard]] static TarnMailBlock list(bool ordered, int start, QList<QList<TarnMailBlock>> items);
    [[nodiscard]] static TarnMailBlock quote(QList<TarnMailBlock> blocks);
    [[nodiscard]] static TarnMailBlock preformatted(QString text);
    [[nodiscard]] static TarnMailBlock table(TarnMailTable table);
    [[nodiscard]] static TarnMailBlock image(TarnMailImage image);
    [[nodiscard]] static TarnMailBlock signature(QList<TarnMailBlock> blocks);
    [[nodiscard]] static TarnMailBlock rule();

    [[nodiscard]] Kind kind() const { return m_kind; }

    // Paragraph and Heading.
    [[nodiscard]] const QList<TarnMailRun> &runs() const;
    // Heading: 1...6.
    [[nodiscard]] int level() const;
    // List.
    [[nodiscard]] bool ordered() const;
    [[nodiscard]] int start() const;
    [[nodiscard]] const QList<QList<TarnMailBlock>> &items() const;
    // Quote and Signature.
    [[nodiscard]] const QList<TarnMailBlock> &blocks() const;
    // Preformatted.
    [[nodiscard]] const QString &text() const;
    // Table and Image; a shared empty value for other kinds.
    [[nodiscard]] const TarnMailTable &table() const;
    [[nodiscard]] const TarnMailImage &image() const;

    friend bool operator==(const TarnMailBlock &a, const TarnMailBlock &b);

private:
    struct Runs {
        int level = 0;
        QList<TarnMailRun> runs;
    };
    struct Items {
        bool ordered = false;
        int start = 1;
        QList<QList<TarnMailBlock>> items;
    };
    struct Children {
        QList<TarnMailBlock> blocks;
    };
    // Tables and images are the large, rare payloads: boxed so that the common
    // paragraph stays small.
    using Payload = std::variant<std::monostate, Runs, Items, Children, QString, std::shared_ptr<const TarnMailTable>,
        std::shared_ptr<const TarnMailImage>>;

    TarnMailBlock(Kind kind, Payload payload);

    Kind m_kind = Kind::Rule;
    Payload m_payload;
};
