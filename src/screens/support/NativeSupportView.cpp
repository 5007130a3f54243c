#include "screens/support/NativeSupportView.h"

#include "screens/support/SupportBoardRules.h"
#include "screens/support/SupportLabels.h"
#include "screens/support/TarnSupportCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeStateErrors.h"

#include <QCoroTimer>
#include <QJsonDocument>
#include <QPointer>
#include <QSettings>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString allView = u"all"_s;

std::optional<QString> optionalText(const QJsonObject &json, QLatin1StringView key)
{
    const QString value = json.value(key).toString();
    return value.isEmpty() ? std::nullopt : std::optional<QString>(value);
}

QVariantList namesOf(const QList<TarnSupportNamed> &named)
{
    QVariantList out;
    for (const TarnSupportNamed &one : named)
        out.append(QVariantMap { { u"id"_s, one.id }, { u"name"_s, one.name } });
    return out;
}

} // namespace

NativeSupportView::NativeSupportView(TarnAPI &api, QSettings &preferences, Clock clock, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_preferences(preferences)
    , m_clock(std::move(clock))
    , m_views(new NativeSupportViewModel(this))
    , m_task(new NativeSupportTaskDetail(
          api, [this] { return m_clock().date(); }, this))
    , m_recurring(new NativeSupportRecurringModel(this))
    , m_time(new NativeSupportTimeModel(this))
    , m_clientNotes(new NativeSupportNoteModel(this))
    , m_clientTasks(new NativeSupportCardModel(this))
{
    for (qsizetype i = 0; i < SupportBoardRules::statuses().size(); ++i)
        m_columns.append(new NativeSupportCardModel(this));
    m_defaultViewId = m_preferences.value(defaultViewKey, allView).toString();
    m_viewId = m_preferences.value(viewKey, m_defaultViewId).toString();
    const QJsonObject config = QJsonDocument::fromJson(m_preferences.value(configKey).toString().toUtf8()).object();
    m_filters = { .assignee_id = optionalText(config, "assignee_id"_L1),
        .client_id = optionalText(config, "client_id"_L1),
        .priority = optionalText(config, "priority"_L1),
        .due = optionalText(config, "due"_L1),
        .text = std::nullopt };
    m_hideDone = config.value("hide_done"_L1).toBool();
    rebuildViews();

    m_tick.setInterval(1000);
    connect(&m_tick, &QTimer::timeout, this, &NativeSupportView::timerTick);
    connect(m_task, &NativeSupportTaskDetail::changed, this, &NativeSupportView::refresh);
    connect(m_task, &NativeSupportTaskDetail::signedOut, this, &NativeSupportView::signedOut);
}

NativeSupportView::~NativeSupportView() = default;

QVariantList NativeSupportView::columns() const
{
    QVariantList out;
    for (const QString &status : SupportBoardRules::statuses())
        out.append(QVariantMap { { u"status"_s, status }, { u"title"_s, SupportLabels::status(status) } });
    return out;
}

bool NativeSupportView::viewExists(const QString &id) const
{
    return std::any_of(m_views->rows().cbegin(), m_views->rows().cend(),
        [&id](const SupportViewChoice &choice) { return choice.id == id; });
}

void NativeSupportView::setViewId(const QString &id)
{
    if (id == m_viewId || !viewExists(id))
        return;
    m_viewId = id;
    m_preferences.setValue(viewKey, id);
    Q_EMIT viewChanged();
    applyFilters();
}

QString NativeSupportView::viewTitle() const
{
    for (const SupportViewChoice &choice : m_views->rows())
        if (choice.id == m_viewId)
            return choice.title;
    return {};
}

bool NativeSupportView::savedViewChosen() const
{
    return !SupportBoardRules::isBuiltIn(m_viewId);
}

void NativeSupportView::setDefaultViewId(const QString &id)
{
    if (id == m_defaultViewId || !viewExists(id))
        return;
    m_defaultViewId = id;
    m_preferences.setValue(defaultViewKey, id);
    Q_EMIT viewChanged();
}

void NativeSupportView::setFilter(std::optional<QString> &filter, const QString &value)
{
    const std::optional<QString> next = value.isEmpty() ? std::nullopt : std::optional<QString>(value);
    if (filter == next)
        return;
    filter = next;
    saveConfig();
    Q_EMIT filtersChanged();
    applyFilters();
}

void NativeSupportView::setAssigneeFilter(const QString &id)
{
    setFilter(m_filters.assignee_id, id);
}

void NativeSupportView::setClientFilter(const QString &id)
{
    setFilter(m_filters.client_id, id);
}

void NativeSupportView::setPriorityFilter(const QString &priority)
{
    setFilter(m_filters.priority, priority);
}

void NativeSupportView::setDueFilter(const QString &due)
{
    setFilter(m_filters.due, due);
}

void NativeSupportView::setSearchText(const QString &text)
{
    if (text == m_searchText)
        return;
    m_searchText = text;
    Q_EMIT filtersChanged();
    applyFilters();
}

void NativeSupportView::setHideDone(bool hide)
{
    if (hide == m_hideDone)
        return;
    m_hideDone = hide;
    saveConfig();
    Q_EMIT filtersChanged();
    applyFilters();
}

void NativeSupportView::clearFilters()
{
    m_filters = {};
    m_searchText.clear();
    saveConfig();
    Q_EMIT filtersChanged();
    applyFilters();
}

void NativeSupportView::saveConfig()
{
    QJsonObject config = m_filters.toJSON();
    config.insert(u"hide_done"_s, m_hideDone);
    m_preferences.setValue(configKey, QString::fromUtf8(QJsonDocument(config).toJson(QJsonDocument::Compact)));
}

QVariantList NativeSupportView::people() const
{
    return namesOf(m_board.people);
}

QVariantList NativeSupportView::clients() const
{
    return namesOf(m_board.clients);
}

int NativeSupportView::shownCount() const
{
    int count = 0;
    for (const NativeSupportCardModel *column : m_columns)
        count += column->count();
    return count;
}

QString NativeSupportView::timerText() const
{
    if (!m_timer)
        return {};
    const QDateTime started = QDateTime::fromString(m_timer->started_at, Qt::ISODateWithMs);
    return SupportLabels::elapsed(started.msecsTo(m_clock()));
}

QString NativeSupportView::weekLogged() const
{
    const QString weekAgo = m_clock().date().addDays(-6).toString(Qt::ISODate);
    qint64 minutes = 0;
    for (const TarnSupportTimeEntry &entry : m_board.time_entries)
        if (entry.day >= weekAgo)
            minutes += entry.minutes;
    return SupportLabels::minutes(minutes);
}

QString NativeSupportView::clientContact() const
{
    if (!m_client)
        return {};
    QStringList parts;
    if (m_client->phone)
        parts.append(*m_client->phone);
    if (m_client->email)
        parts.append(*m_client->email);
    return parts.join(u" · "_s);
}

QString NativeSupportView::clientLogged() const
{
    return m_client ? SupportLabels::minutes(m_client->logged_minutes) : QString();
}

TarnSupportFilters NativeSupportView::effectiveFilters() const
{
    TarnSupportFilters base;
    if (SupportBoardRules::isBuiltIn(m_viewId)) {
        base = SupportBoardRules::filtersOf(m_viewId, m_api.session() ? m_api.session()->id : QString());
    } else {
        for (const TarnSupportSavedView &view : m_board.views)
            if (view.id == m_viewId)
                base = view.filters;
    }
    TarnSupportFilters over = m_filters;
    over.text = m_searchText.trimmed().isEmpty() ? std::nullopt : std::optional<QString>(m_searchText.trimmed());
    return SupportBoardRules::merged(base, over);
}

QList<QList<SupportCard>> NativeSupportView::cardColumns(const QList<TarnSupportTaskSummary> &tasks,
    const TarnSupportFilters &filters, const QDate &today, bool byClient, const QString &timing)
{
    const QString todayText = today.toString(Qt::ISODate);
    QList<QList<SupportCard>> out;
    for (const SupportBoardRules::Column &column : SupportBoardRules::columns(tasks, filters, today, byClient)) {
        const bool isDone = column.status == "done"_L1;
        QList<SupportCard> cards;
        cards.reserve(column.rows.size());
        for (const qsizetype row : column.rows) {
            const TarnSupportTaskSummary &task = tasks.at(row);
            cards.append({ .task = task,
                .dueLabel = task.due_date ? SupportLabels::due(*task.due_date, today, isDone) : QString(),
                .overdue = !isDone && task.due_date && *task.due_date < todayText,
                .timing = !timing.isEmpty() && task.id == timing });
        }
        out.append(cards);
    }
    return out;
}

void NativeSupportView::applyFilters()
{
    const QList<QList<SupportCard>> columns
        = cardColumns(m_board.tasks, effectiveFilters(), m_clock().date(), m_viewId == "client"_L1, timerTaskId());
    const int before = shownCount();
    for (qsizetype c = 0; c < columns.size(); ++c) {
        const bool hidden = m_hideDone && SupportBoardRules::statuses().at(c) == "done"_L1;
        m_columns.at(c)->setRows(hidden ? QList<SupportCard>() : columns.at(c));
    }
    if (shownCount() != before)
        Q_EMIT boardChanged();
}

void NativeSupportView::rebuildViews()
{
    QList<SupportViewChoice> choices;
    for (const SupportBoardRules::BuiltInView &view : SupportBoardRules::builtInViews())
        choices.append({ .id = view.id, .title = view.title, .builtIn = true });
    for (const TarnSupportSavedView &view : m_board.views)
        choices.append({ .id = view.id, .title = view.name, .builtIn = false });
    m_views->setRows(choices);
}

void NativeSupportView::showBoard(TarnSupportBoard board)
{
    const bool listsChanged = board.people != m_board.people || board.clients != m_board.clients
        || board.time_entries != m_board.time_entries;
    const bool viewsChanged = board.views != m_board.views;
    m_board = std::move(board);
    if (viewsChanged) {
        rebuildViews();
        // A saved view deleted elsewhere falls back to the default one.
        if (!viewExists(m_viewId)) {
            m_viewId = viewExists(m_defaultViewId) ? m_defaultViewId : allView;
            m_preferences.setValue(viewKey, m_viewId);
        }
        Q_EMIT viewChanged();
    }
    m_recurring->setRows(m_board.recurring);
    m_time->setRows(m_board.time_entries);
    setTimer(m_board.timer);
    applyFilters();
    if (listsChanged)
        Q_EMIT boardChanged();
}

void NativeSupportView::setTimer(std::optional<TarnSupportTimer> timer)
{
    if (timer == m_timer)
        return;
    m_timer = std::move(timer);
    if (m_timer && m_loopGeneration > 0)
        m_tick.start();
    else
        m_tick.stop();
    Q_EMIT timerChanged();
    Q_EMIT timerTick();
}

void NativeSupportView::appear()
{
    if (m_timer)
        m_tick.start();
    setLoading(true);
    TarnRefreshLoop::run(this, &NativeSupportView::m_loopGeneration, ++m_loopGeneration, refreshIntervalMs,
        &NativeSupportView::refreshOnce);
}

void NativeSupportView::disappear()
{
    ++m_loopGeneration;
    m_tick.stop();
}

void NativeSupportView::refresh()
{
    refreshOnce();
}

void NativeSupportView::clear()
{
    ++m_loopGeneration;
    ++m_clientGeneration;
    m_tick.stop();
    m_board = {};
    m_timer.reset();
    m_client.reset();
    m_searchText.clear();
    m_loaded = false;
    m_loading = false;
    m_refreshFailed = false;
    setError({});
    m_task->clear();
    m_recurring->setRows({});
    m_time->setRows({});
    m_clientNotes->setRows({});
    m_clientTasks->setRows({});
    rebuildViews();
    applyFilters();
    Q_EMIT boardChanged();
    Q_EMIT timerChanged();
    Q_EMIT clientChanged();
    Q_EMIT filtersChanged();
    Q_EMIT loadingChanged();
}

QCoro::Task<> NativeSupportView::refreshOnce()
{
    const QPointer<NativeSupportView> self(this);
    try {
        TarnSupportBoard board = co_await TarnSupportCalls::supportBoard(m_api);
        if (!self)
            co_return;
        if (m_refreshFailed) {
            m_refreshFailed = false;
            setError({});
        }
        showBoard(std::move(board));
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        m_refreshFailed = true;
    }
    if (!m_loaded) {
        m_loaded = true;
        Q_EMIT loadingChanged();
    }
    setLoading(false);
    Q_EMIT refreshed();
}

QCoro::Task<> NativeSupportView::act(std::function<QCoro::Task<>()> call)
{
    const QPointer<NativeSupportView> self(this);
    setError({});
    try {
        QCoro::Task<> task = call();
        co_await std::move(task);
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (!self)
        co_return;
    co_await refreshOnce();
    if (!self)
        co_return;
    if (m_task->isOpen())
        m_task->reload();
    Q_EMIT actionFinished();
}

void NativeSupportView::moveCard(const QString &taskId, const QString &status)
{
    if (!SupportBoardRules::statuses().contains(status))
        return;
    const auto found = std::find_if(m_board.tasks.begin(), m_board.tasks.end(),
        [&taskId](const TarnSupportTaskSummary &task) { return task.id == taskId; });
    if (found == m_board.tasks.end() || found->status == status)
        return;
    const TarnSupportTaskUpdate update { .version = found->version, .status = status };
    // Shown where it was put at once; the answer (or the board read after a
    // refusal) puts it where the service has it.
    found->status = status;
    applyFilters();
    act([this, taskId, update]() -> QCoro::Task<> {
        co_await TarnSupportCalls::updateSupportTask(m_api, taskId, update);
    });
}

void NativeSupportView::moveCardBy(const QString &taskId, int step)
{
    for (const TarnSupportTaskSummary &task : std::as_const(m_board.tasks)) {
        if (task.id != taskId)
            continue;
        const qsizetype at = SupportBoardRules::statuses().indexOf(task.status) + step;
        if (at >= 0 && at < SupportBoardRules::statuses().size())
            moveCard(taskId, SupportBoardRules::statuses().at(at));
        return;
    }
}

void NativeSupportView::startTimer(const QString &taskId)
{
    act([this, taskId]() -> QCoro::Task<> { co_await TarnSupportCalls::trackSupportTime(m_api, taskId, u"start"_s); });
}

void NativeSupportView::stopTimer()
{
    if (!m_timer)
        return;
    const QString taskId = m_timer->task_id;
    act([this, taskId]() -> QCoro::Task<> { co_await TarnSupportCalls::trackSupportTime(m_api, taskId, u"stop"_s); });
}

void NativeSupportView::createTask(const QString &title, const QString &priority, const QString &clientId,
    const QString &assigneeId, const QString &dueDate)
{
    if (title.trimmed().isEmpty())
        return;
    const TarnSupportTaskDraft draft { .title = title.trimmed(),
        .priority = priority.isEmpty() ? u"normal"_s : priority,
        .client_id = clientId.isEmpty() ? m_filters.client_id.value_or(QString()) : clientId,
        .assignee_id = assigneeId,
        .due_date = dueDate,
        .description = {} };
    act([this, draft]() -> QCoro::Task<> {
        const QPointer<NativeSupportView> self(this);
        const TarnCreatedID created = co_await TarnSupportCalls::createSupportTask(m_api, draft);
        if (self)
            m_task->openTask(created.id);
    });
}

void NativeSupportView::saveView(const QString &name)
{
    if (name.trimmed().isEmpty())
        return;
    const TarnSupportViewDraft view { .name = name.trimmed(), .filters = effectiveFilters() };
    act([this, view]() -> QCoro::Task<> {
        const QPointer<NativeSupportView> self(this);
        const TarnCreatedID created = co_await TarnSupportCalls::saveSupportView(m_api, view);
        if (!self)
            co_return;
        // The view holds the filters now; it is chosen once the board has it.
        m_filters = {};
        m_searchText.clear();
        saveConfig();
        m_viewId = created.id;
        m_preferences.setValue(viewKey, created.id);
        Q_EMIT filtersChanged();
    });
}

void NativeSupportView::renameView(const QString &id, const QString &name)
{
    if (name.trimmed().isEmpty() || SupportBoardRules::isBuiltIn(id))
        return;
    const QString text = name.trimmed();
    act([this, id, text]() -> QCoro::Task<> { co_await TarnSupportCalls::renameSupportView(m_api, id, text); });
}

void NativeSupportView::deleteView(const QString &id)
{
    if (SupportBoardRules::isBuiltIn(id))
        return;
    act([this, id]() -> QCoro::Task<> { co_await TarnSupportCalls::deleteSupportView(m_api, id); });
}

void NativeSupportView::addRecurring(const QString &title, const QString &every, const QString &firstDue,
    const QString &clientId, const QString &assigneeId)
{
    const TarnSupportRecurringDraft draft { .title = title.trimmed(),
        .every = every,
        .first_due = firstDue,
        .client_id = clientId,
        .assignee_id = assigneeId };
    act([this, draft]() -> QCoro::Task<> { co_await TarnSupportCalls::addSupportRecurring(m_api, draft); });
}

void NativeSupportView::stopRecurring(const QString &id)
{
    act([this, id]() -> QCoro::Task<> { co_await TarnSupportCalls::stopSupportRecurring(m_api, id); });
}

void NativeSupportView::openClient(const QString &clientId)
{
    ++m_clientGeneration;
    m_client.reset();
    m_clientNotes->setRows({});
    m_clientTasks->setRows({});
    Q_EMIT clientChanged();
    if (!clientId.isEmpty())
        loadClient(clientId);
}

void NativeSupportView::closeClient()
{
    openClient({});
}

QCoro::Task<> NativeSupportView::loadClient(QString id)
{
    const QPointer<NativeSupportView> self(this);
    const int generation = m_clientGeneration;
    try {
        TarnSupportClient client = co_await TarnSupportCalls::supportClient(m_api, id);
        if (!self || generation != m_clientGeneration)
            co_return;
        const QDate today = m_clock().date();
        QList<SupportCard> cards;
        for (const TarnSupportTaskSummary &task : client.tasks) {
            const bool isDone = task.status == "done"_L1;
            cards.append({ .task = task,
                .dueLabel = task.due_date ? SupportLabels::due(*task.due_date, today, isDone) : QString(),
                .overdue = !isDone && task.due_date && *task.due_date < today.toString(Qt::ISODate) });
        }
        m_clientNotes->setRows(client.notes);
        m_clientTasks->setRows(cards);
        m_client = std::move(client);
        Q_EMIT clientChanged();
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (self)
        Q_EMIT actionFinished();
}

void NativeSupportView::addClientNote(const QString &body)
{
    if (!m_client || body.trimmed().isEmpty())
        return;
    const QString id = m_client->id;
    const QString text = body.trimmed();
    act([this, id, text]() -> QCoro::Task<> {
        const QPointer<NativeSupportView> self(this);
        co_await TarnSupportCalls::addSupportClientNote(m_api, id, text);
        if (self)
            co_await loadClient(id);
    });
}

QVariantList NativeSupportView::withNone(const QString &label, const QVariantList &choices)
{
    return QVariantList { QVariantMap { { u"id"_s, QString() }, { u"name"_s, label } } } + choices;
}

void NativeSupportView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeSupportView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeSupportView::setLoading(bool loading)
{
    if (m_loading == loading)
        return;
    m_loading = loading;
    Q_EMIT loadingChanged();
}
