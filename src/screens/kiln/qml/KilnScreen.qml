import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import QtWebEngine
import PiloTarn.Design
import PiloTarn.Kiln

// The web workspace inside the window, signed in with a one-time code. It
// stays on the service's own host: a link anywhere else opens in the
// desktop's browser.
Pane {
    id: screen

    required property NativeKilnView view

    padding: 0
    background: null

    Component.onCompleted: view.appear()
    Component.onDestruction: view.disappear()

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ErrorBanner {
            objectName: "kilnError"
            text: screen.view.errorText
            retryable: true
            onRetry: screen.view.appear()
            Layout.fillWidth: true
            Layout.margins: Theme.spacing.l
        }

        WebEngineView {
            id: web
            objectName: "kilnWeb"
            url: screen.view.url
            Layout.fillWidth: true
            Layout.fillHeight: true

            onNavigationRequested: request => {
                if (screen.view.allowed(request.url))
                    return
                request.action = WebEngineNavigationRequest.IgnoreRequest
                screen.view.openOutside(request.url)
            }
            onNewWindowRequested: request => screen.view.openOutside(request.requestedUrl)
            onCertificateError: error => {
                if (screen.view.trusts(error))
                    error.acceptCertificate()
                else
                    error.rejectCertificate()
            }
            onLoadingChanged: request => {
                if (request.status === WebEngineView.LoadSucceededStatus)
                    screen.view.pageLoaded(true, "")
                else if (request.status === WebEngineView.LoadFailedStatus)
                    screen.view.pageLoaded(false, request.errorString)
            }
        }
    }
}
