import QtQuick
import QtQuick.Controls
import PiloTarn.Customers
import PiloTarn.Design

// The pipeline: one column per stage, left to right in stage order.
ListView {
    id: pipeline

    required property NativeCustomersView view

    orientation: ListView.Horizontal
    model: view.stages
    spacing: Theme.spacing.m
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.horizontal: ScrollBar {}

    delegate: CustomerStageColumn {
        required property var modelData
        readonly property CustomerPipeline owner: ListView.view as CustomerPipeline

        width: 240
        height: ListView.view.height
        view: owner ? owner.view : null
        stage: modelData.id
        label: modelData.label
    }
}
