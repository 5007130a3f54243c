#include "screens/people/NativeHRView.h"

#include "screens/people/HRRules.h"
#include "screens/people/TarnPeopleCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativeHRView::NativeHRView(TarnAPI &api, QObject *parent)
    : NativePeopleSection(parent)
    , m_api(api)
    , m_records(new NativeHRRecordModel(this))
{
}

NativeHRView::~NativeHRView() = default;

bool NativeHRView::canEdit() const
{
    return m_api.session() && m_api.session()->owner.value_or(false);
}

QStringList NativeHRView::employments() const
{
    return HRRules::employments();
}

void NativeHRView::select(const QString &personId)
{
    if (personId == m_selected)
        return;
    m_selected = personId;
    Q_EMIT selectionChanged();
}

void NativeHRView::clear()
{
    ++m_generation;
    m_records->setRows({});
    m_selected.clear();
    Q_EMIT selectionChanged();
    resetStatus();
}

void NativeHRView::refresh()
{
    load();
}

QCoro::Task<> NativeHRView::load()
{
    const QPointer<NativeHRView> self(this);
    const int generation = m_generation;
    try {
        const QList<TarnHRRecord> team = co_await TarnPeopleCalls::hrRecords(m_api);
        if (!self || generation != m_generation)
            co_return;
        m_records->setRows(team);
        if (!team.isEmpty() && m_records->recordOf(m_selected).isEmpty())
            m_selected = team.constFirst().id;
        // The chosen record may have changed under the same id.
        Q_EMIT selectionChanged();
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    setLoaded();
    Q_EMIT refreshed();
}

void NativeHRView::save(const QString &personId, const QString &jobTitle, const QString &employment,
    const QString &startedOn, const QString &phone, const QString &emergencyContact)
{
    const QList<TarnHRRecord> &rows = m_records->rows();
    const auto at
        = std::find_if(rows.cbegin(), rows.cend(), [&](const TarnHRRecord &record) { return record.id == personId; });
    if (busy() || at == rows.cend())
        return;
    TarnHRRecordEdit edit { .job_title = jobTitle.trimmed(),
        .employment = employment,
        .started_on = startedOn.trimmed(),
        .phone = phone.trimmed(),
        .emergency_contact = emergencyContact.trimmed(),
        .version = at->version };
    const QString problem = HRRules::editProblem(edit);
    if (!problem.isEmpty())
        return setError(problem);
    changeAndReload(
        [this, personId, edit]() -> QCoro::Task<> {
            (void)co_await TarnPeopleCalls::updateHRRecord(m_api, personId, edit);
        },
        [this] { return load(); });
}
