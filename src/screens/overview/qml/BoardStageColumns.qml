import QtQuick
import PiloTarn.Design
import PiloTarn.Overview

// The chosen board's stages side by side. A positioner, not a layout, holds
// the repeated columns.
Row {
    required property NativeOverviewView view

    spacing: Theme.spacing.m

    Repeater {
        model: parent.view.stages

        delegate: BoardStageColumn {
            required property string modelData
            required property int index
            readonly property BoardStageColumns columns: parent as BoardStageColumns

            width: 240
            height: columns ? columns.height : 0
            view: columns ? columns.view : null
            stage: modelData
            previousStage: columns && index > 0 ? columns.view.stages[index - 1] : ""
            nextStage: columns && index + 1 < columns.view.stages.length ? columns.view.stages[index + 1] : ""
        }
    }
}
