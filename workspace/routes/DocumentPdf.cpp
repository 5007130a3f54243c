#include "workspace/routes/DocumentPdf.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace {

constexpr int pageWidth = 612; // US Letter, in points
constexpr int pageHeight = 792;
constexpr int mostPages = 12;

// Text as a PDF string literal in the standard fonts' Latin-1 encoding; what
// Latin-1 lacks becomes "?" and the string's own delimiters are escaped.
QByteArray literal(const QString &text)
{
    QByteArray out = "(";
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'(' || u == u')' || u == u'\\')
            out += '\\';
        out += u >= 0x20 && u <= 0xff ? char(u) : '?';
    }
    return out + ')';
}

QByteArray textAt(int x, int y, int size, const QString &text)
{
    return "BT /F1 " + QByteArray::number(size) + " Tf " + QByteArray::number(x) + ' ' + QByteArray::number(y) + " Td "
        + literal(text) + " Tj ET\n";
}

} // namespace

namespace DocumentPdf {

QByteArray render(const QString &title, const QStringList &lines, int pages)
{
    const int count = std::clamp(pages, 1, mostPages);
    // Objects: 1 catalog, 2 page tree, 3 font, then a page and its content each.
    QList<QByteArray> objects;
    objects.append("<< /Type /Catalog /Pages 2 0 R >>");
    QByteArray kids;
    for (int i = 0; i < count; ++i)
        kids += QByteArray::number(4 + 2 * i) + " 0 R ";
    objects.append("<< /Type /Pages /Kids [" + kids.trimmed() + "] /Count " + QByteArray::number(count) + " >>");
    objects.append("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>");
    for (int i = 0; i < count; ++i) {
        QByteArray content = textAt(72, pageHeight - 96, 22, title);
        if (i == 0) {
            int y = pageHeight - 140;
            for (const QString &line : lines) {
                content += textAt(72, y, 12, line);
                y -= 20;
            }
        }
        content += textAt(72, 48, 9, u"Page %1 of %2"_s.arg(i + 1).arg(count));
        objects.append("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + QByteArray::number(pageWidth) + ' '
            + QByteArray::number(pageHeight) + "] /Resources << /Font << /F1 3 0 R >> >> /Contents "
            + QByteArray::number(5 + 2 * i) + " 0 R >>");
        objects.append("<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content + "endstream");
    }
    QByteArray pdf = "%PDF-1.4\n";
    QList<qsizetype> offsets;
    for (qsizetype i = 0; i < objects.size(); ++i) {
        offsets.append(pdf.size());
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects.at(i) + "\nendobj\n";
    }
    const qsizetype xref = pdf.size();
    pdf += "xref\n0 " + QByteArray::number(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (const qsizetype offset : offsets)
        pdf += QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
    pdf += "trailer\n<< /Size " + QByteArray::number(objects.size() + 1) + " /Root 1 0 R >>\nstartxref\n"
        + QByteArray::number(xref) + "\n%%EOF\n";
    return pdf;
}

} // namespace DocumentPdf
