#include "chat/MessagesStyle.h"
#include "chat/TarnInitials.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestAvatarStyle : public QObject {
    Q_OBJECT

private slots:
    void initials_data();
    void initials();
    void gradientIndex_data();
    void gradientIndex();
};

void TestAvatarStyle::initials_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("letters");

    struct Row {
        const char *label;
        QString name;
        QString letters;
    };
    const Row rows[] {
        { "two words", u"maren holt"_s, u"MH"_s },
        { "only the first two words", u"Anna Maria Berg"_s, u"AM"_s },
        { "one word", u"Priya"_s, u"P"_s },
        { "runs of spaces, tabs and newlines", u"  olu \t\n adeyemi "_s, u"OA"_s },
        { "only spaces", u"   "_s, u"?"_s },
        { "empty", QString(), u"?"_s },
        { "letters outside the basic plane stay whole", u"\U0001D4D0lma \U0001D4D1erg"_s, u"\U0001D4D0\U0001D4D1"_s },
        { "accented letters upper-case", u"élodie ørsted"_s, u"ÉØ"_s },
    };
    for (const Row &row : rows)
        QTest::addRow("%s", row.label) << row.name << row.letters;
}

void TestAvatarStyle::initials()
{
    QFETCH(QString, name);
    QFETCH(QString, letters);
    QCOMPARE(TarnInitials::letters(name), letters);
}

void TestAvatarStyle::gradientIndex_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<quint64>("hash");

    // Worked by hand: 5381, then ×33 + each scalar, wrapping at 2^64.
    QTest::addRow("empty key") << QString() << quint64(5381);
    QTest::addRow("one letter") << u"a"_s << quint64(5381 * 33 + 97);
    QTest::addRow("a scalar outside the basic plane counts once") << u"\U0001F600"_s << quint64(5381 * 33 + 0x1F600);
    QTest::addRow("an address") << u"maren@halvard.example"_s << quint64(6666187613141246900ULL);
    QTest::addRow("long keys wrap") << QString(40, u'z') << quint64(2515515968843180053ULL);
}

void TestAvatarStyle::gradientIndex()
{
    QFETCH(QString, key);
    QFETCH(quint64, hash);
    QCOMPARE(MessagesStyle::hash(key), hash);
    QCOMPARE(MessagesStyle::gradient(key), MessagesStyle::palette().at(hash % 9));
}

QTEST_APPLESS_MAIN(TestAvatarStyle)
#include "tst_avatarstyle.moc"
