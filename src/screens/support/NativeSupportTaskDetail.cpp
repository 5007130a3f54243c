#include "screens/support/NativeSupportTaskDetail.h"

#include "screens/support/SupportBoardRules.h"
#include "screens/support/SupportLabels.h"
#include "screens/support/TarnSupportCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "shell/NativeStateErrors.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QSaveFile>

using namespace Qt::StringLiterals;

NativeSupportTaskDetail::NativeSupportTaskDetail(TarnAPI &api, Today today, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_today(std::move(today))
    , m_subtasks(new NativeSupportCardModel(this))
    , m_comments(new NativeSupportNoteModel(this))
    , m_files(new NativeSupportFileModel(this))
    , m_time(new NativeSupportTimeModel(this))
{
}

NativeSupportTaskDetail::~NativeSupportTaskDetail() = default;

QString NativeSupportTaskDetail::statusLabel() const
{
    return m_task ? SupportLabels::status(m_task->task.status) : QString();
}

QString NativeSupportTaskDetail::clientId() const
{
    return m_task ? m_task->task.client_id.value_or(QString()) : QString();
}

QString NativeSupportTaskDetail::client() const
{
    return m_task ? m_task->task.client_name.value_or(QString()) : QString();
}

QString NativeSupportTaskDetail::assigneeId() const
{
    return m_task ? m_task->task.assignee_id.value_or(QString()) : QString();
}

QString NativeSupportTaskDetail::assignee() const
{
    return m_task ? m_task->task.assignee_name.value_or(QString()) : QString();
}

QString NativeSupportTaskDetail::dueDate() const
{
    return m_task ? m_task->task.due_date.value_or(QString()) : QString();
}

QString NativeSupportTaskDetail::dueLabel() const
{
    return m_task ? SupportLabels::due(dueDate(), m_today(), m_task->task.status == "done"_L1) : QString();
}

QString NativeSupportTaskDetail::logged() const
{
    return m_task && m_task->task.logged_minutes > 0 ? SupportLabels::minutes(m_task->task.logged_minutes) : QString();
}

void NativeSupportTaskDetail::openTask(const QString &id)
{
    if (id == m_id)
        return;
    ++m_generation;
    m_id = id;
    setError({});
    show(std::nullopt);
    Q_EMIT taskChanged();
    if (!id.isEmpty())
        load(m_generation);
}

void NativeSupportTaskDetail::reload()
{
    if (!m_id.isEmpty())
        load(m_generation);
}

void NativeSupportTaskDetail::clear()
{
    ++m_generation;
    m_id.clear();
    show(std::nullopt);
    setError({});
    setBusy(false);
    Q_EMIT taskChanged();
}

QCoro::Task<> NativeSupportTaskDetail::load(int generation)
{
    const QPointer<NativeSupportTaskDetail> self(this);
    const QString id = m_id;
    try {
        TarnSupportTask task = co_await TarnSupportCalls::supportTask(m_api, id);
        if (!self || generation != m_generation)
            co_return;
        show(std::move(task));
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    Q_EMIT settled();
}

void NativeSupportTaskDetail::show(std::optional<TarnSupportTask> task)
{
    if (task == m_task)
        return;
    QList<SupportCard> subtasks;
    if (task) {
        for (const TarnSupportTaskSummary &subtask : task->subtasks)
            subtasks.append({ .task = subtask, .dueLabel = {}, .overdue = false });
    }
    m_subtasks->setRows(subtasks);
    m_comments->setRows(task ? task->comments : QList<TarnSupportComment>());
    m_files->setRows(task ? task->files : QList<TarnSupportFile>());
    m_time->setRows(task ? task->time_entries : QList<TarnSupportTimeEntry>());
    m_task = std::move(task);
    Q_EMIT taskChanged();
}

QCoro::Task<> NativeSupportTaskDetail::change(std::function<QCoro::Task<>()> call)
{
    const QPointer<NativeSupportTaskDetail> self(this);
    const int generation = m_generation;
    setBusy(true);
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
    setBusy(false);
    Q_EMIT changed();
    if (generation == m_generation && !m_id.isEmpty())
        co_await load(generation);
    else if (self)
        Q_EMIT settled();
}

void NativeSupportTaskDetail::update(TarnSupportTaskUpdate update)
{
    if (!m_task || m_busy)
        return;
    update.version = m_task->task.version;
    const QString id = m_id;
    change([this, id, update]() -> QCoro::Task<> { co_await TarnSupportCalls::updateSupportTask(m_api, id, update); });
}

void NativeSupportTaskDetail::edit(const QString &field, const QString &value)
{
    TarnSupportTaskUpdate change;
    if (field == "title"_L1) {
        if (value.trimmed().isEmpty() || value.trimmed() == title())
            return;
        change.title = value.trimmed();
    } else if (field == "description"_L1) {
        if (value == description())
            return;
        change.description = value;
    } else if (field == "status"_L1) {
        change.status = value;
    } else if (field == "priority"_L1) {
        change.priority = value;
    } else if (field == "due_date"_L1) {
        change.due_date = value;
    } else if (field == "assignee_id"_L1) {
        change.assignee_id = value;
    } else if (field == "client_id"_L1) {
        change.client_id = value;
    } else {
        return;
    }
    update(change);
}

void NativeSupportTaskDetail::addSubtask(const QString &title)
{
    if (m_id.isEmpty() || title.trimmed().isEmpty())
        return;
    const QString id = m_id;
    const QString text = title.trimmed();
    change([this, id, text]() -> QCoro::Task<> { co_await TarnSupportCalls::createSupportSubtask(m_api, id, text); });
}

void NativeSupportTaskDetail::setSubtaskDone(const QString &id, bool done)
{
    for (const SupportCard &subtask : m_subtasks->rows()) {
        if (subtask.task.id != id)
            continue;
        const TarnSupportTaskUpdate move { .version = subtask.task.version, .status = done ? u"done"_s : u"todo"_s };
        change([this, id, move]() -> QCoro::Task<> { co_await TarnSupportCalls::updateSupportTask(m_api, id, move); });
        return;
    }
}

void NativeSupportTaskDetail::addComment(const QString &body)
{
    if (m_id.isEmpty() || body.trimmed().isEmpty())
        return;
    const QString id = m_id;
    const QString text = body.trimmed();
    change([this, id, text]() -> QCoro::Task<> { co_await TarnSupportCalls::addSupportTaskComment(m_api, id, text); });
}

void NativeSupportTaskDetail::attachFile(const QUrl &file)
{
    if (m_id.isEmpty())
        return;
    const QString path = file.isLocalFile() ? file.toLocalFile() : file.toString();
    const QFileInfo info(path);
    if (const std::optional<QString> refusal = SupportBoardRules::fileRefusal(info.fileName(), info.size())) {
        setError(*refusal);
        return;
    }
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly)) {
        setError(u"“%1” could not be read."_s.arg(info.fileName()));
        return;
    }
    const TarnSupportUpload upload { .name = info.fileName(),
        .data = QString::fromLatin1(source.readAll().toBase64()) };
    const QString id = m_id;
    change([this, id, upload]() -> QCoro::Task<> { co_await TarnSupportCalls::attachSupportFile(m_api, id, upload); });
}

void NativeSupportTaskDetail::downloadFile(const QString &fileId, const QUrl &target)
{
    saveFile(fileId, target.isLocalFile() ? target.toLocalFile() : target.toString());
}

QCoro::Task<> NativeSupportTaskDetail::saveFile(QString fileId, QString path)
{
    const QPointer<NativeSupportTaskDetail> self(this);
    setBusy(true);
    try {
        const QByteArray bytes = co_await TarnSupportCalls::downloadSupportFile(m_api, fileId);
        if (!self)
            co_return;
        QSaveFile out(path);
        if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit())
            setError(u"“%1” could not be saved."_s.arg(QFileInfo(path).fileName()));
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (!self)
        co_return;
    setBusy(false);
    Q_EMIT settled();
}

void NativeSupportTaskDetail::logTime(int minutes, const QString &note)
{
    if (m_id.isEmpty() || minutes <= 0)
        return;
    const QString id = m_id;
    const TarnSupportTimeLog log { .minutes = minutes, .day = m_today().toString(Qt::ISODate), .note = note.trimmed() };
    change([this, id, log]() -> QCoro::Task<> { co_await TarnSupportCalls::logSupportTime(m_api, id, log); });
}

void NativeSupportTaskDetail::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeSupportTaskDetail::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeSupportTaskDetail::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}
