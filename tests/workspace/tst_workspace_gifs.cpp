#include "support/TestWorkspace.h"
#include "workspace/WorkspaceGif.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

// The GIF folder: the encoder that makes the demo's GIFs, read back by Qt's
// own reader, and the search and downloads of a workspace serving them.
class TestWorkspaceGifs : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void encodedFramesReadBack_data();
    void encodedFramesReadBack();
    void searchFindsNameWords_data();
    void searchFindsNameWords();
    void servesOnlyListedFiles_data();
    void servesOnlyListedFiles();
    void cleanupTestCase();

private:
    QTemporaryDir folder;
    std::unique_ptr<TestWorkspace> workspace;
    QString token;
};

void TestWorkspaceGifs::initTestCase()
{
    QVERIFY(folder.isValid());
    QCOMPARE(WorkspaceGif::writeDemo(folder.path()), QString());
    workspace = std::make_unique<TestWorkspace>(QStringList { u"--gif-folder"_s, folder.path() });
    QVERIFY2(workspace->isRunning(), qPrintable(workspace->error()));
    token = workspace->signIn(u"maren@halvard.example"_s);
    QVERIFY(!token.isEmpty());
}

void TestWorkspaceGifs::cleanupTestCase()
{
    workspace.reset();
}

void TestWorkspaceGifs::encodedFramesReadBack_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    // Sizes around the encoder's run of literals between two clear codes.
    for (const int side : { 1, 3, 14, 15, 40 })
        QTest::addRow("%dx%d", side, side + 1) << side << side + 1;
}

void TestWorkspaceGifs::encodedFramesReadBack()
{
    QFETCH(int, width);
    QFETCH(int, height);
    const QList<quint32> palette = { 0x000000, 0xff0000, 0x00ff00, 0x0000ff, 0xffffff };
    QList<QByteArray> frames;
    for (int f = 0; f < 2; ++f) {
        QByteArray pixels(width * height, '\0');
        for (int i = 0; i < pixels.size(); ++i)
            pixels[i] = char((i * 7 + f) % palette.size());
        frames.append(pixels);
    }
    QByteArray gif = WorkspaceGif::encode(width, height, palette, frames, 10);
    QCOMPARE(WorkspaceGif::size(gif), QSize(width, height));

    QBuffer buffer(&gif);
    QImageReader reader(&buffer, "gif");
    for (int f = 0; f < frames.size(); ++f) {
        const QImage image = reader.read();
        QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
        QCOMPARE(image.size(), QSize(width, height));
        for (int i = 0; i < width * height; ++i)
            QCOMPARE(image.pixel(i % width, i / width) & 0xffffff, palette.at(quint8(frames.at(f).at(i))));
    }
}

void TestWorkspaceGifs::searchFindsNameWords_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("ids");
    QTest::addRow("plural finds singular") << u"cats"_s << QStringList { u"dancing-cat"_s, u"happy-cat"_s };
    QTest::addRow("every word counts") << u"Happy CAT"_s << QStringList { u"happy-cat"_s };
    QTest::addRow("word start") << u"coff"_s << QStringList { u"morning-coffee"_s };
    QTest::addRow("empty lists all") << QString()
                                     << QStringList { u"dancing-cat"_s, u"happy-cat"_s, u"morning-coffee"_s,
                                            u"party-confetti"_s };
    QTest::addRow("no match") << u"zebra"_s << QStringList();
    QTest::addRow("reserved characters are text") << u"&=+#?/"_s << QStringList();
}

void TestWorkspaceGifs::searchFindsNameWords()
{
    QFETCH(QString, query);
    QFETCH(QStringList, ids);
    const TestWorkspace::Answer answer
        = workspace->send("GET", u"api/gifs?q="_s + QString::fromLatin1(QUrl::toPercentEncoding(query)), token, {});
    QCOMPARE(answer.status, 200);
    const QJsonObject search = answer.json();
    QVERIFY(search.value("configured"_L1).toBool());
    QStringList found;
    for (const QJsonValue &gif : search.value("results"_L1).toArray()) {
        found.append(gif.toObject().value("id"_L1).toString());
        QCOMPARE(gif.toObject().value("width"_L1).toInt(), 64);
        QVERIFY(!gif.toObject().value("title"_L1).toString().isEmpty());
    }
    QCOMPARE(found, ids);
    QCOMPARE(search.contains("message"_L1), ids.isEmpty());
}

void TestWorkspaceGifs::servesOnlyListedFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::addRow("preview") << u"api/gifs/happy-cat/preview"_s << 200;
    QTest::addRow("file") << u"api/gifs/happy-cat/file"_s << 200;
    QTest::addRow("unknown") << u"api/gifs/sad-cat/file"_s << 404;
    QTest::addRow("outside the folder") << u"api/gifs/..%2Fhappy-cat/file"_s << 404;
    QTest::addRow("not a gif") << u"api/gifs/notes/file"_s << 404;
}

void TestWorkspaceGifs::servesOnlyListedFiles()
{
    QFETCH(QString, path);
    QFETCH(int, status);
    QFile notes(QDir(folder.path()).filePath(u"notes.txt"_s));
    QVERIFY(notes.open(QIODevice::WriteOnly));
    notes.write("GIF89a, but text");
    notes.close();
    const TestWorkspace::Answer answer = workspace->send("GET", path, token, {});
    QCOMPARE(answer.status, status);
    if (status == 200) {
        QFile file(QDir(folder.path()).filePath(u"happy-cat.gif"_s));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(answer.body, file.readAll());
    }
}

QTEST_GUILESS_MAIN(TestWorkspaceGifs)
#include "tst_workspace_gifs.moc"
