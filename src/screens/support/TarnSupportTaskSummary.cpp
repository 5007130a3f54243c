#include "screens/support/TarnSupportTaskSummary.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportTaskSummary TarnSupportTaskSummary::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .status = json.string("status"_L1),
        .priority = json.string("priority"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .assignee_id = json.optionalString("assignee_id"_L1),
        .assignee_name = json.optionalString("assignee_name"_L1),
        .due_date = json.optionalString("due_date"_L1),
        .recurring_id = json.optionalString("recurring_id"_L1),
        .parent_id = json.optionalString("parent_id"_L1),
        .version = json.integer("version"_L1),
        .updated_at = json.string("updated_at"_L1),
        .subtask_count = json.integer("subtask_count"_L1),
        .subtasks_done = json.integer("subtasks_done"_L1),
        .comment_count = json.integer("comment_count"_L1),
        .logged_minutes = json.integer("logged_minutes"_L1) };
}
