#pragma once

#include "screens/support/NativeSupportCardModel.h"
#include "screens/support/NativeSupportFileModel.h"
#include "screens/support/NativeSupportNoteModel.h"
#include "screens/support/NativeSupportTimeModel.h"
#include "screens/support/TarnSupportTask.h"
#include "screens/support/TarnSupportTaskUpdate.h"

#include <QCoroTask>
#include <QDate>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

class TarnAPI;
class TarnAPIError;

// The task open beside the board: its fields, subtasks, comments, files
// and logged time, and the changes made to them. A change carries the
// version the task was read at; when someone else changed it first, the
// refusal stays in `errorText` and the task as it is now is shown. After
// every change the task is read again and `changed` tells the board.
class NativeSupportTaskDetail : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString taskId READ taskId NOTIFY taskChanged)
    Q_PROPERTY(bool open READ isOpen NOTIFY taskChanged)
    Q_PROPERTY(QString title READ title NOTIFY taskChanged)
    Q_PROPERTY(QString description READ description NOTIFY taskChanged)
    Q_PROPERTY(QString status READ status NOTIFY taskChanged)
    Q_PROPERTY(QString statusLabel READ statusLabel NOTIFY taskChanged)
    Q_PROPERTY(QString priority READ priority NOTIFY taskChanged)
    Q_PROPERTY(QString clientId READ clientId NOTIFY taskChanged)
    Q_PROPERTY(QString client READ client NOTIFY taskChanged)
    Q_PROPERTY(QString assigneeId READ assigneeId NOTIFY taskChanged)
    Q_PROPERTY(QString assignee READ assignee NOTIFY taskChanged)
    Q_PROPERTY(QString dueDate READ dueDate NOTIFY taskChanged)
    Q_PROPERTY(QString dueLabel READ dueLabel NOTIFY taskChanged)
    Q_PROPERTY(bool recurring READ recurring NOTIFY taskChanged)
    Q_PROPERTY(QString logged READ logged NOTIFY taskChanged)
    Q_PROPERTY(NativeSupportCardModel *subtasks READ subtasks CONSTANT)
    Q_PROPERTY(NativeSupportNoteModel *comments READ comments CONSTANT)
    Q_PROPERTY(NativeSupportFileModel *files READ files CONSTANT)
    Q_PROPERTY(NativeSupportTimeModel *timeEntries READ timeEntries CONSTANT)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    using Today = std::function<QDate()>;
    explicit NativeSupportTaskDetail(TarnAPI &api, Today today, QObject *parent = nullptr);
    ~NativeSupportTaskDetail() override;

    [[nodiscard]] QString taskId() const { return m_id; }
    [[nodiscard]] bool isOpen() const { return !m_id.isEmpty(); }
    [[nodiscard]] QString title() const { return m_task ? m_task->task.title : QString(); }
    [[nodiscard]] QString description() const { return m_task ? m_task->description : QString(); }
    [[nodiscard]] QString status() const { return m_task ? m_task->task.status : QString(); }
    [[nodiscard]] QString statusLabel() const;
    [[nodiscard]] QString priority() const { return m_task ? m_task->task.priority : QString(); }
    [[nodiscard]] QString clientId() const;
    [[nodiscard]] QString client() const;
    [[nodiscard]] QString assigneeId() const;
    [[nodiscard]] QString assignee() const;
    [[nodiscard]] QString dueDate() const;
    [[nodiscard]] QString dueLabel() const;
    [[nodiscard]] bool recurring() const { return m_task && m_task->task.recurring_id.has_value(); }
    [[nodiscard]] QString logged() const;
    [[nodiscard]] NativeSupportCardModel *subtasks() const { return m_subtasks; }
    [[nodiscard]] NativeSupportNoteModel *comments() const { return m_comments; }
    [[nodiscard]] NativeSupportFileModel *files() const { return m_files; }
    [[nodiscard]] NativeSupportTimeModel *timeEntries() const { return m_time; }
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] QString errorText() const { return m_error; }
    [[nodiscard]] const std::optional<TarnSupportTask> &task() const { return m_task; }

    // Opens a task (an empty id closes it) and reads it.
    Q_INVOKABLE void openTask(const QString &id);
    Q_INVOKABLE void close() { openTask({}); }
    Q_INVOKABLE void reload();

    // One field: "title", "description", "status", "priority", "due_date",
    // "assignee_id" or "client_id"; an empty value clears the last four.
    Q_INVOKABLE void edit(const QString &field, const QString &value);
    Q_INVOKABLE void addSubtask(const QString &title);
    Q_INVOKABLE void setSubtaskDone(const QString &id, bool done);
    Q_INVOKABLE void addComment(const QString &body);
    // A local file; one over the limit is refused here, naming it.
    Q_INVOKABLE void attachFile(const QUrl &file);
    // Saves a file of the task to `target`.
    Q_INVOKABLE void downloadFile(const QString &fileId, const QUrl &target);
    // Minutes spent today, with a note.
    Q_INVOKABLE void logTime(int minutes, const QString &note);
    // Forgets everything: the session ended.
    void clear();

Q_SIGNALS:
    void taskChanged();
    void busyChanged();
    void errorTextChanged();
    // A change went through or was refused; the board reads again.
    void changed();
    // A read or an action finished (for tests).
    void settled();
    void signedOut();

private:
    QCoro::Task<> load(int generation);
    // Runs one change, then shows the task as it is now.
    QCoro::Task<> change(std::function<QCoro::Task<>()> call);
    QCoro::Task<> saveFile(QString fileId, QString path);
    void update(TarnSupportTaskUpdate update);
    void show(std::optional<TarnSupportTask> task);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void setBusy(bool busy);

    TarnAPI &m_api;
    Today m_today;
    QString m_id;
    std::optional<TarnSupportTask> m_task;
    NativeSupportCardModel *m_subtasks;
    NativeSupportNoteModel *m_comments;
    NativeSupportFileModel *m_files;
    NativeSupportTimeModel *m_time;
    bool m_busy = false;
    QString m_error;
    // Bumped when another task opens: answers for the last one are dropped.
    int m_generation = 0;
};
