#include "workspace/WorkspaceGif.h"

#include <QDir>
#include <QSaveFile>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

void putShort(QByteArray &out, int value)
{
    out.append(char(value & 0xff));
    out.append(char((value >> 8) & 0xff));
}

// LZW whose table never grows past 9-bit codes: every index goes out as a
// literal and the table is cleared long before a tenth bit would be needed.
// Larger than real compression, far simpler, and every decoder reads it.
QByteArray compress(const QByteArray &indices)
{
    constexpr int clearCode = 256;
    constexpr int endCode = 257;
    // Under the 254 literals after which a decoder widens its codes.
    constexpr qsizetype run = 200;
    QByteArray codes;
    quint32 bits = 0;
    int pending = 0;
    const auto put = [&](int code) {
        bits |= quint32(code) << pending;
        pending += 9;
        for (; pending >= 8; pending -= 8, bits >>= 8)
            codes.append(char(bits & 0xff));
    };
    for (qsizetype i = 0; i < indices.size(); ++i) {
        if (i % run == 0)
            put(clearCode);
        put(quint8(indices.at(i)));
    }
    put(endCode);
    if (pending > 0)
        codes.append(char(bits & 0xff));
    QByteArray out;
    for (qsizetype at = 0; at < codes.size(); at += 255) {
        const QByteArray block = codes.mid(at, 255);
        out.append(char(block.size()));
        out.append(block);
    }
    out.append('\0');
    return out;
}

// A frame being drawn: one palette index per pixel.
struct Canvas {
    static constexpr int side = 64;
    QByteArray pixels = QByteArray(side * side, '\0');

    void paint(const std::function<bool(int, int)> &inside, char colour)
    {
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                if (inside(x, y))
                    pixels[y * side + x] = colour;
            }
        }
    }
    void disc(double cx, double cy, double r, char colour)
    {
        paint([=](int x, int y) { return std::hypot(x + 0.5 - cx, y + 0.5 - cy) <= r; }, colour);
    }
    void box(double x0, double y0, double w, double h, char colour)
    {
        paint([=](int x, int y) { return x >= x0 && x < x0 + w && y >= y0 && y < y0 + h; }, colour);
    }
    // An ear: a triangle with its tip at (tx, ty) over a base at `baseY`.
    void ear(double tx, double ty, double baseY, double halfWidth, char colour)
    {
        paint(
            [=](int x, int y) {
                const double t = (y - ty) / (baseY - ty);
                return t >= 0 && t <= 1 && std::abs(x - tx) <= t * halfWidth;
            },
            colour);
    }
};

enum Colour : char { Paper, Ink, Ginger, Pink, Yellow, Blue, Green, Red, Purple, Coffee, Steam };
const QList<quint32> palette
    = { 0xfdf8ef, 0x2b2a33, 0xf0a04b, 0xf08fa8, 0xf7d154, 0x4f8ff7, 0x58c48a, 0xe5534b, 0x9b6bf0, 0x7a4a2a, 0xc9ccd3 };

QByteArray cat(int frame, double dx, double dy)
{
    Canvas c;
    const double cx = 32 + dx;
    const double cy = 36 + dy;
    c.ear(cx - 13, cy - 24, cy - 8, 8, Ginger);
    c.ear(cx + 13, cy - 24, cy - 8, 8, Ginger);
    c.disc(cx, cy, 18, Ginger);
    if (frame % 8 == 6)
        for (const double ex : { cx - 7, cx + 7 })
            c.box(ex - 3, cy - 4, 6, 2, Ink);
    else
        for (const double ex : { cx - 7, cx + 7 })
            c.disc(ex, cy - 3, 3, Ink);
    c.disc(cx, cy + 4, 2.5, Pink);
    return c.pixels;
}

QByteArray confetti(int frame)
{
    Canvas c;
    const char colours[] = { Red, Yellow, Blue, Green, Purple, Pink };
    for (int i = 0; i < 18; ++i) {
        const int x = (i * 37 + 5) % 60;
        const int y = (i * 23 + frame * 8) % 64;
        c.box(x, y, 4, 4, colours[i % 6]);
    }
    return c.pixels;
}

QByteArray coffee(int frame)
{
    Canvas c;
    for (int puff = 0; puff < 3; ++puff) {
        const double rise = std::fmod(frame * 3.0 + puff * 8.0, 24.0);
        c.disc(26 + puff * 6 + std::sin(rise / 4) * 3, 28 - rise, 3.5 - rise / 10, Steam);
    }
    c.disc(46, 42, 7, Coffee);
    c.disc(46, 42, 3.5, Paper);
    c.box(16, 32, 28, 22, Coffee);
    c.box(10, 54, 40, 3, Ink);
    return c.pixels;
}

} // namespace

namespace WorkspaceGif {

std::optional<QSize> size(const QByteArray &head)
{
    if (head.size() < 10 || !(head.startsWith("GIF87a") || head.startsWith("GIF89a")))
        return std::nullopt;
    const auto word = [&head](int at) { return quint8(head.at(at)) | quint8(head.at(at + 1)) << 8; };
    return QSize(word(6), word(8));
}

QByteArray encode(int width, int height, const QList<quint32> &palette, const QList<QByteArray> &frames, int delayCs)
{
    QByteArray out("GIF89a");
    putShort(out, width);
    putShort(out, height);
    // A global table of 256 colours, 8 bits per primary.
    out.append(char(0xf7));
    out.append(2, '\0');
    for (int i = 0; i < 256; ++i) {
        const quint32 rgb = palette.value(i);
        out.append(char(rgb >> 16 & 0xff));
        out.append(char(rgb >> 8 & 0xff));
        out.append(char(rgb & 0xff));
    }
    // Loops for ever.
    out.append("\x21\xff\x0bNETSCAPE2.0\x03\x01\x00\x00\x00", 19);
    for (const QByteArray &frame : frames) {
        out.append("\x21\xf9\x04\x04", 4);
        putShort(out, delayCs);
        out.append(2, '\0');
        out.append(char(0x2c));
        putShort(out, 0);
        putShort(out, 0);
        putShort(out, width);
        putShort(out, height);
        out.append('\0');
        out.append(char(8));
        out.append(compress(frame));
    }
    out.append(char(0x3b));
    return out;
}

QString writeDemo(const QString &folder)
{
    struct Animation {
        QString name;
        std::function<QByteArray(int)> frame;
    };
    const Animation animations[] = {
        { u"happy-cat.gif"_s, [](int f) { return cat(f, 0, std::sin(f * M_PI / 4) * 3); } },
        { u"dancing-cat.gif"_s, [](int f) { return cat(f, std::sin(f * M_PI / 4) * 8, 0); } },
        { u"party-confetti.gif"_s, confetti },
        { u"morning-coffee.gif"_s, coffee },
    };
    if (!QDir().mkpath(folder))
        return u"%1 could not be made"_s.arg(folder);
    for (const Animation &animation : animations) {
        QList<QByteArray> frames;
        for (int f = 0; f < 8; ++f)
            frames.append(animation.frame(f));
        QSaveFile file(QDir(folder).filePath(animation.name));
        const QByteArray gif = encode(Canvas::side, Canvas::side, palette, frames, 12);
        if (!file.open(QIODevice::WriteOnly) || file.write(gif) != gif.size() || !file.commit())
            return u"%1: %2"_s.arg(file.fileName(), file.errorString());
    }
    return {};
}

} // namespace WorkspaceGif
