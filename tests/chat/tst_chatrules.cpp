#include "chat/ChatGifCommand.h"
#include "chat/ChatOutgoingFile.h"
#include "chat/QuickMeeting.h"
#include "chat/TarnChatCalls.h"
#include "chat/TarnMessage.h"
#include "service/TarnJSONObject.h"

#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Random colours compress badly, so small pictures make large files; every
// pixel fully transparent, so a shrunk copy must come out white.
QByteArray transparentNoisePng(int side)
{
    QImage image(side, side, QImage::Format_ARGB32);
    QRandomGenerator random(7);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            image.setPixel(x, y, random.generate() & 0x00ffffffU);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return png;
}

} // namespace

// The rules that need no service: outgoing files, the GIF command, quick
// meeting names and the message record.
class TestChatRules : public QObject {
    Q_OBJECT

private slots:
    void outgoingFiles_data();
    void outgoingFiles();
    void shrunkNames_data();
    void shrunkNames();
    void gifCommand_data();
    void gifCommand();
    void gifFileName_data();
    void gifFileName();
    void meetingNames_data();
    void meetingNames();
    void messageRecord_data();
    void messageRecord();
};

void TestChatRules::outgoingFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<qint64>("limit");
    // Empty when the file is refused.
    QTest::addColumn<QString>("stagedName");
    QTest::addColumn<bool>("unchanged");

    const qint64 limit = TarnChatCalls::maxFileBytes;
    const QByteArray png = transparentNoisePng(120);
    struct Row {
        const char *label;
        QString name;
        QByteArray data;
        qint64 limit;
        QString stagedName;
        bool unchanged;
    };
    const Row rows[] {
        { "exactly 5 MiB goes as it is", u"notes.bin"_s, QByteArray(limit, 'x'), limit, u"notes.bin"_s, true },
        { "a byte over 5 MiB that is no image is refused", u"notes.bin"_s, QByteArray(limit + 1, 'x'), limit, {},
            false },
        { "an image over the limit is shrunk to JPEG", u"scan.png"_s, png, png.size() / 4, u"scan.jpg"_s, false },
        { "an image within the limit is not touched", u"scan.png"_s, png, png.size(), u"scan.png"_s, true },
        { "an image no attempt fits is refused", u"scan.png"_s, png, 100, {}, false },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.name << row.data << row.limit << row.stagedName << row.unchanged;
}

void TestChatRules::outgoingFiles()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, data);
    QFETCH(qint64, limit);
    QFETCH(QString, stagedName);
    QFETCH(bool, unchanged);

    const ChatOutgoingFile::Outcome outcome = ChatOutgoingFile::prepare(name, data, limit);
    if (stagedName.isEmpty()) {
        QVERIFY(std::holds_alternative<QString>(outcome));
        QVERIFY2(std::get<QString>(outcome).contains(name), qPrintable(std::get<QString>(outcome)));
        return;
    }
    QVERIFY(std::holds_alternative<ChatDraftFile>(outcome));
    const ChatDraftFile &file = std::get<ChatDraftFile>(outcome);
    QCOMPARE(file.name, stagedName);
    QVERIFY(!file.id.isEmpty());
    QVERIFY(file.data.size() <= limit);
    QCOMPARE(file.data == data, unchanged);
    if (!unchanged) {
        const QImage shrunk = QImage::fromData(file.data, "jpeg");
        QVERIFY(!shrunk.isNull());
        QVERIFY(qGray(shrunk.pixel(shrunk.width() / 2, shrunk.height() / 2)) > 245);
    }
}

void TestChatRules::shrunkNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shrunk");
    QTest::addRow("extension replaced") << u"scan.png"_s << u"scan.jpg"_s;
    QTest::addRow("only the last extension") << u"team.photo.webp"_s << u"team.photo.jpg"_s;
    QTest::addRow("nothing before the extension") << u".png"_s << u"image.jpg"_s;
    QTest::addRow("no extension") << u"whiteboard"_s << u"whiteboard.jpg"_s;
}

void TestChatRules::shrunkNames()
{
    QFETCH(QString, name);
    QFETCH(QString, shrunk);
    QCOMPARE(ChatOutgoingFile::shrunkName(name), shrunk);
}

void TestChatRules::gifCommand_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<QString>>("query");
    QTest::addRow("a query") << u"/gif cats"_s << std::optional(u"cats"_s);
    QTest::addRow("case and spaces") << u"  /GIF   happy  cats "_s << std::optional(u"happy  cats"_s);
    QTest::addRow("alone") << u"/gif"_s << std::optional(QString());
    QTest::addRow("a longer word") << u"/giffy cats"_s << std::optional<QString>();
    QTest::addRow("not at the start") << u"look /gif cats"_s << std::optional<QString>();
}

void TestChatRules::gifCommand()
{
    QFETCH(QString, text);
    QFETCH(std::optional<QString>, query);
    QCOMPARE(ChatGifCommand::query(text), query);
}

void TestChatRules::gifFileName_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::addRow("words joined") << u"Happy Cat: Dance!"_s << u"happy-cat-dance.gif"_s;
    QTest::addRow("path characters never pass") << u"../../etc/passwd"_s << u"etc-passwd.gif"_s;
    QTest::addRow("no letters") << u"!!! ???"_s << u"gif.gif"_s;
    QTest::addRow("cut to 60") << QString(70, u'a') << QString(60, u'a') + u".gif"_s;
}

void TestChatRules::gifFileName()
{
    QFETCH(QString, title);
    QFETCH(QString, name);
    QCOMPARE(ChatGifCommand::fileName(title), name);
}

void TestChatRules::meetingNames_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QStringList>("invitees");
    QTest::addColumn<QString>("name");
    QTest::addRow("first words, the user first")
        << u"Maren Holt"_s << QStringList { u"Olu Adeyemi"_s, u"Priya Nair"_s } << u"meet-maren-olu-priya"_s;
    QTest::addRow("cut to 60") << u"Maren"_s << QStringList(12, u"Bartholomew X"_s)
                               << u"meet-maren-bartholomew-bartholomew-bartholomew-bartholomew-b"_s;
    QTest::addRow("no usable words") << u"  "_s << QStringList { u"🙂 face"_s, u""_s } << u"Design review-6789"_s;
}

void TestChatRules::meetingNames()
{
    QFETCH(QString, user);
    QFETCH(QStringList, invitees);
    QFETCH(QString, name);
    QCOMPARE(QuickMeeting::channelName(user, invitees, u"Design review"_s, 1732481236789), name);
}

void TestChatRules::messageRecord_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("accepted");
    const QByteArray required = R"("id":"m1","user_id":"u1","author":"A","body":"b","created_at":"t","seq":3,)"
                                R"("reply_count":0,"attachments":[])";
    QTest::addRow("required keys only") << ("{" + required + "}") << true;
    QTest::addRow("optionals null") << ("{" + required + R"(,"deleted_at":null,"version":null,"reactions":null})")
                                    << true;
    QTest::addRow("missing seq") << QByteArray(R"({"id":"m1","user_id":"u1","author":"A","body":"b",)"
                                               R"("created_at":"t","reply_count":0,"attachments":[]})")
                                 << false;
    QTest::addRow("reaction of the wrong shape")
        << ("{" + required + R"(,"reactions":[{"emoji":"x","count":"2","mine":true}]})") << false;
}

void TestChatRules::messageRecord()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, accepted);
    bool decoded = true;
    try {
        const TarnMessage message = TarnJSON::decode<TarnMessage>(json);
        QCOMPARE(message.seq, qint64(3));
    } catch (const TarnDecodeError &) {
        decoded = false;
    }
    QCOMPARE(decoded, accepted);
}

QTEST_MAIN(TestChatRules)
#include "tst_chatrules.moc"
