// What the real-world corpus teaches: every mail parses within the limits,
// the reply chains of the common clients fold their history away, and
// newsletters keep their text but lose their trackers. Also replays every input
// the fuzzers once broke on.
#include "mail/TarnMailHTML.h"
#include "mail/TarnMailImage.h"
#include "mail/TarnMailJSON.h"
#include "mail/TarnMailTable.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

QString corpus(const QString &relative)
{
    return QDir(QStringLiteral(TARN_CORPUS_DIR)).filePath(relative);
}

struct Count {
    int blocks = 0;
    qsizetype characters = 0;
    int depth = 0;
};

void count(const QList<TarnMailBlock> &blocks, Count &total, int depth = 1)
{
    total.depth = qMax(total.depth, depth);
    for (const TarnMailBlock &block : blocks) {
        ++total.blocks;
        for (const TarnMailRun &run : block.runs())
            total.characters += run.text.size();
        total.characters += block.text().size();
        for (const TarnMailTable::Row &row : block.table().rows) {
            for (const TarnMailTable::Cell &cell : row) {
                for (const TarnMailRun &run : cell)
                    total.characters += run.text.size();
            }
        }
        count(block.blocks(), total, depth + 1);
        for (const QList<TarnMailBlock> &item : block.items())
            count(item, total, depth + 1);
    }
}

} // namespace

class TestMailCorpus : public QObject {
    Q_OBJECT

private slots:
    void everyMailParsesWithinLimits_data();
    void everyMailParsesWithinLimits();
    void replyChainsFoldHistory_data();
    void replyChainsFoldHistory();
    void newslettersDropPixels_data();
    void newslettersDropPixels();
    void fuzzRegressions_data();
    void fuzzRegressions();
};

void TestMailCorpus::everyMailParsesWithinLimits_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("characterLimit");
    QTest::addColumn<int>("blockLimit");
    const QStringList files = QDir(corpus(u"html-mail"_s)).entryList({ u"*.html"_s }, QDir::Files, QDir::Name);
    for (const QString &file : files) {
        const QString path = corpus(u"html-mail/"_s + file);
        QTest::addRow("%s thread", qPrintable(file)) << path << 150000 << 4000;
        QTest::addRow("%s tight", qPrintable(file)) << path << 300 << 12;
    }
}

void TestMailCorpus::everyMailParsesWithinLimits()
{
    QFETCH(QString, path);
    QFETCH(int, characterLimit);
    QFETCH(int, blockLimit);
    const QByteArray bytes = readFile(path);
    const TarnMailDocument document = TarnMailHTML::parseUTF8(bytes, characterLimit, blockLimit);

    Count total;
    count(document.blocks, total);
    count(document.quoted, total);
    QVERIFY(total.characters <= characterLimit);
    // Containers open when the block limit is hit still close: at most one per level.
    QVERIFY2(total.blocks <= blockLimit + total.depth, qPrintable(QString::number(total.blocks)));
    QVERIFY(!document.blocks.isEmpty());

    QCOMPARE(TarnMailHTML::parse(QString::fromUtf8(bytes), characterLimit, blockLimit), document);

    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(TarnMailJSON::encode(document), &error);
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(json.object().value("blocks"_L1).toArray().size(), document.blocks.size());
}

void TestMailCorpus::replyChainsFoldHistory_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reply"); // in the new part
    QTest::addColumn<QString>("history"); // in the quoted part only

    QTest::addRow("gmail") << u"talon-std__gmail.html"_s << u"Hello"_s << u"wrote:"_s;
    QTest::addRow("thunderbird") << u"talon-html_replies__thunderbird.html"_s << u"I am fine."_s << u"How are you?"_s;
    QTest::addRow("sparrow") << u"talon-std__sparrow.html"_s << u"Sent with Sparrow"_s << u"bob wrote:"_s;
    QTest::addRow("outlook web separator")
        << u"xerp__email_de_8.html"_s << u"Danke erst einmal"_s << u"Gesendet: 18:42"_s;
}

void TestMailCorpus::replyChainsFoldHistory()
{
    QFETCH(QString, file);
    QFETCH(QString, reply);
    QFETCH(QString, history);
    const TarnMailDocument document = TarnMailHTML::parseUTF8(readFile(corpus(u"html-mail/"_s + file)), 150000, 4000);
    const QString shown = TarnMailHTML::plainText(document.blocks);
    const QString quoted = TarnMailHTML::plainText(document.quoted);
    QVERIFY2(shown.contains(reply), qPrintable(shown.left(200)));
    QVERIFY2(quoted.contains(history), qPrintable(quoted.left(200)));
    QVERIFY2(!shown.contains(history), qPrintable(shown.left(200)));
}

void TestMailCorpus::newslettersDropPixels_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("tracks"); // the mail has web bugs to block
    QTest::addColumn<QString>("text");

    QTest::addRow("spam with web bugs") << u"sa__data_spam_badmime.html"_s << true << QString();
    QTest::addRow("german newsletter") << u"sa__data_welcomelists_netcenter-direct_de.html"_s << true << u"Netscape"_s;
    QTest::addRow("responsive template") << u"cerberus__cerberus-responsive.html"_s << false
                                         << u"Maecenas sed ante pellentesque"_s;
}

void TestMailCorpus::newslettersDropPixels()
{
    QFETCH(QString, file);
    QFETCH(bool, tracks);
    QFETCH(QString, text);
    const TarnMailDocument document = TarnMailHTML::parseUTF8(readFile(corpus(u"html-mail/"_s + file)), 150000, 4000);
    QCOMPARE(document.blockedTrackers > 0, tracks);
    QVERIFY(!document.truncated);
    QVERIFY2(TarnMailHTML::plainText(document.blocks).contains(text, Qt::CaseInsensitive), qPrintable(file));
    for (const TarnMailImage &image : TarnMailHTML::images(document.blocks)) {
        if (image.source.kind() == TarnMailImageSource::Kind::Remote)
            QVERIFY2(!TarnMailHTML::isTrackerURL(image.source.url()), qPrintable(image.source.url().toString()));
    }
}

void TestMailCorpus::fuzzRegressions_data()
{
    QTest::addColumn<QString>("path");
    const QDir dir(QStringLiteral(TARN_SOURCE_DIR "/fuzz/mail/regressions"));
    for (const QString &file : dir.entryList(QDir::Files, QDir::Name))
        QTest::addRow("%s", qPrintable(file)) << dir.filePath(file);
}

void TestMailCorpus::fuzzRegressions()
{
    QFETCH(QString, path);
    const QByteArray bytes = readFile(path);
    const QString text = QString::fromUtf8(bytes);
    for (const auto &[characters, blocks] : { std::pair { 150000, 4000 }, std::pair { 64, 4 } }) {
        const TarnMailDocument document = TarnMailHTML::parseUTF8(bytes, characters, blocks);
        QCOMPARE(TarnMailHTML::parse(text, characters, blocks), document);
        QVERIFY(!TarnMailJSON::encode(document).isEmpty());
        const TarnMailDocument plain = TarnMailHTML::parsePlainText(text, characters);
        QVERIFY(plain.truncated == (text.size() > characters));
    }
    QVERIFY(TarnMailHTML::decodeEntities(text).size() <= text.size());
    if (const std::optional<QUrl> link = TarnMailHTML::safeLink(text))
        QCOMPARE(TarnMailHTML::linkDecision(TarnMailHTML::confirmationURL(*link)).kind(), LinkDecision::Kind::Confirm);
}

QTEST_APPLESS_MAIN(TestMailCorpus)
#include "tst_mailcorpus.moc"
