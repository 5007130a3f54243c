#include "screens/people/HRRules.h"
#include "screens/people/TarnPeopleRequests.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct EditRow {
    TarnHRRecordEdit edit;
    QString problem; // empty: may be stored
};

TarnHRRecordEdit valid()
{
    return { u"Designer"_s, u"part-time"_s, u"2023-04-17"_s, u"+1 555 0104"_s, {}, 3 };
}

} // namespace

Q_DECLARE_METATYPE(EditRow)

// The checks on an owner's change to an HR record, which the screen and
// the workspace both apply.
class TestHRRules : public QObject {
    Q_OBJECT

private slots:
    void edits_data();
    void edits();
};

void TestHRRules::edits_data()
{
    QTest::addColumn<EditRow>("row");
    QTest::addRow("valid") << EditRow { valid(), {} };
    const auto with = [](auto change) {
        TarnHRRecordEdit edit = valid();
        change(edit);
        return edit;
    };
    QTest::addRow("contacts cleared") << EditRow { with([](auto &e) { e.phone.clear(); }), {} };
    QTest::addRow("blank title") << EditRow { with([](auto &e) { e.job_title = u"   "_s; }), u"Give the job title."_s };
    QTest::addRow("employment by label") << EditRow { with([](auto &e) { e.employment = u"Part-time"_s; }),
        u"Employment is employee, part-time, contractor or owner."_s };
    QTest::addRow("day out of range") << EditRow { with([](auto &e) { e.started_on = u"2023-02-30"_s; }),
        u"Type the start date as YYYY-MM-DD."_s };
    QTest::addRow("long emergency contact")
        << EditRow { with([](auto &e) { e.emergency_contact = QString(201, u'x'); }),
               u"Keep each detail to 200 characters or fewer."_s };
    QTest::addRow("200 characters fit") << EditRow { with([](auto &e) { e.job_title = QString(200, u'x'); }), {} };
}

void TestHRRules::edits()
{
    QFETCH(EditRow, row);
    QCOMPARE(HRRules::editProblem(row.edit), row.problem);
}

QTEST_GUILESS_MAIN(TestHRRules)
#include "tst_hrrules.moc"
