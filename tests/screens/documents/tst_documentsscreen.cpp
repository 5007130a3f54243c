#include "SigningForm.h"
#include "inbox/InboxTestClient.h"
#include "screens/documents/NativeDocumentsView.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_DocumentsPlugin)

using namespace Qt::StringLiterals;

// The documents screen drawn offscreen over the demo workspace, used by
// pointer and keyboard as a person would.
class TestDocumentsScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void envelopeWrittenAndSent();
    void cleanupTestCase();

private:
    [[nodiscard]] QList<QQuickItem *> shown(const QString &name) const
    {
        QList<QQuickItem *> visible;
        for (QQuickItem *item : tarnNamedItems(window.contentItem(), name))
            if (item->isVisible())
                visible.append(item);
        return visible;
    }
    void click(QQuickItem *item)
    {
        QTest::mouseClick(&window, Qt::LeftButton, {}, item->mapToScene({ 10, 10 }).toPoint());
    }

    InboxTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeDocumentsView> view;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestDocumentsScreen::initTestCase()
{
    QCOMPARE(client.start(), QString());
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    view = std::make_unique<NativeDocumentsView>(client.as(u"maren@halvard.example"_s));
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    window.resize(1100, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Documents\nDocumentsScreen { width: 1100; height: 700 }", QUrl());
    QSignalSpy refreshed(view.get(), &NativeDocumentsView::refreshed);
    screen.reset(component.createWithInitialProperties(
        { { u"view"_s, QVariant::fromValue(view.get()) }, { u"section"_s, u"Proposals"_s } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    QVERIFY(refreshed.wait(10'000));
    QTRY_COMPARE(shown(u"documentRow"_s).size(), view->documents()->rowCount());
}

void TestDocumentsScreen::cleanupTestCase()
{
    screen.reset();
}

void TestDocumentsScreen::envelopeWrittenAndSent()
{
    QQuickItem *quill = nullptr;
    for (QQuickItem *row : shown(u"documentRow"_s))
        if (row->property("documentId").toString() == "doc-pr-quill"_L1)
            quill = row;
    QVERIFY(quill);
    window.update();
    QTRY_VERIFY2(quill->width() > 0, "the list is laid out");
    click(quill);
    QTRY_COMPARE(shown(u"envelopeComposer"_s).size(), 1);

    const auto focus = [this](const QString &field) {
        shown(field).constFirst()->property("input").value<QQuickItem *>()->forceActiveFocus();
    };
    focus(u"recipientName"_s);
    for (const char key : "Wren Quill"_L1)
        QTest::keyClick(&window, key);
    focus(u"recipientEmail"_s);
    for (const char key : "wren@quill.example"_L1)
        QTest::keyClick(&window, key);
    QTest::keyClick(&window, Qt::Key_Return);
    QCOMPARE(view->draftRecipients().size(), 1);

    QSignalSpy finished(view.get(), &NativeDocumentsView::actionFinished);
    click(shown(u"envelopeCreate"_s).constFirst());
    QVERIFY(finished.wait());
    QTRY_COMPARE(shown(u"envelopeCard"_s).size(), 1);
    QCOMPARE(shown(u"envelopeComposer"_s).size(), 0);

    click(shown(u"envelopeSend"_s).constFirst());
    QVERIFY(finished.wait());
    QTRY_COMPARE(shown(u"envelopeSend"_s).size(), 0);
    // Only the signer whose turn it is has their link, copied with a word.
    QTRY_COMPARE(shown(u"signerCopyLink"_s).size(), 1);
    click(shown(u"signerCopyLink"_s).constFirst());
    QCOMPARE(QGuiApplication::clipboard()->text(), view->signUrl());
    QTRY_COMPARE(shown(u"envelopeNotice"_s).size(), 1);
    QCOMPARE(SigningForm::sign(*client.workspace, view->signUrl(), u"Wren Quill"_s).status, 200);
    QTRY_COMPARE(shown(u"signerRow"_s).constFirst()->property("status").toString(), u"signed"_s);

    QTest::keyClick(&window, Qt::Key_Escape);
    QTRY_COMPARE(shown(u"envelopeCard"_s).size(), 0);
}

QTEST_MAIN(TestDocumentsScreen)
#include "tst_documentsscreen.moc"
