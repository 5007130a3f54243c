#include "shell/design/NativeTheme.h"
#include "shell/design/NativeUndoToast.h"

#include <QAccessible>
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

using namespace Qt::StringLiterals;

namespace {

QQuickItem *child(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> items { root };
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items.at(i)->objectName() == name)
            return items.at(i);
        items += items.at(i)->childItems();
    }
    return nullptr;
}

void click(QQuickItem *item)
{
    QVERIFY(item && item->isVisible());
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(item->window(), Qt::LeftButton, {}, centre.toPoint());
}

} // namespace

class TestDesignComponents : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void formFieldSaysItsError();
    void focusRingOnlyForTheKeyboard();
    void confirmSheet_data();
    void confirmSheet();
    void undoToast();
    void countBadge_data();
    void countBadge();
    void avatarWithoutItsPhoto();
    void searchFieldEscape();

private:
    // `body` made in a window, under the theme the app would attach.
    QQuickItem *make(const QByteArray &body);

    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_preferences;
    std::unique_ptr<NativeTheme> m_theme;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

void TestDesignComponents::init()
{
    m_preferences = std::make_unique<QSettings>(m_folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    m_theme = std::make_unique<NativeTheme>(*m_preferences);
    NativeTheme::loadFonts();
    m_engine = std::make_unique<QQmlEngine>();
    m_theme->attach(*m_engine);
    m_window = std::make_unique<QQuickWindow>();
    m_window->resize(640, 480);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void TestDesignComponents::cleanup()
{
    m_window.reset();
    m_engine.reset();
    m_theme.reset();
}

QQuickItem *TestDesignComponents::make(const QByteArray &body)
{
    QQmlComponent component(m_engine.get());
    component.setData("import QtQuick\nimport QtQuick.Controls\nimport PiloTarn.Design\n" + body, QUrl());
    auto *item = qobject_cast<QQuickItem *>(component.create());
    if (!item) {
        qWarning() << component.errors();
        return nullptr;
    }
    item->setParent(m_window.get());
    item->setParentItem(m_window->contentItem());
    return item;
}

void TestDesignComponents::formFieldSaysItsError()
{
    QQuickItem *form = make("FormField { width: 300; label: \"Amount\"; text: \"12,3\" }");
    QVERIFY(form);
    QQuickItem *error = child(form, u"fieldError"_s);
    QVERIFY(error);
    QVERIFY(!error->isVisible());

    form->setProperty("error", u"Enter an amount such as 12.50."_s);
    QVERIFY(error->isVisible());
    QCOMPARE(error->property("text").toString(), u"Enter an amount such as 12.50."_s);
    auto *input = form->property("input").value<QQuickItem *>();
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(input);
    QVERIFY(accessible);
    QCOMPARE(accessible->text(QAccessible::Name), u"Amount"_s);
    QCOMPARE(accessible->text(QAccessible::Description), u"Enter an amount such as 12.50."_s);
}

void TestDesignComponents::focusRingOnlyForTheKeyboard()
{
    QQuickItem *row = make("Row { ActionButton { objectName: \"first\"; text: \"First\" }"
                           " ActionButton { objectName: \"second\"; text: \"Second\" } }");
    QVERIFY(row);
    QQuickItem *first = child(row, u"first"_s);
    QQuickItem *second = child(row, u"second"_s);
    QSignalSpy clicked(second, SIGNAL(clicked()));

    // A click focuses without a ring; Tab draws it, and Return presses.
    click(first);
    QVERIFY(!child(first, u"focusRing"_s)->isVisible());
    first->forceActiveFocus(Qt::MouseFocusReason);
    QTest::keyClick(m_window.get(), Qt::Key_Tab);
    QVERIFY(second->hasActiveFocus());
    QVERIFY(child(second, u"focusRing"_s)->isVisible());
    QVERIFY(!child(first, u"focusRing"_s)->isVisible());
    QTest::keyClick(m_window.get(), Qt::Key_Return);
    QCOMPARE(clicked.size(), 1);
}

void TestDesignComponents::confirmSheet_data()
{
    QTest::addColumn<QString>("press");
    QTest::addColumn<int>("confirmed");

    QTest::addRow("the confirming button") << u"sheetConfirm"_s << 1;
    QTest::addRow("cancel") << u"sheetCancel"_s << 0;
    QTest::addRow("escape") << u"Escape"_s << 0;
}

void TestDesignComponents::confirmSheet()
{
    QFETCH(QString, press);
    QFETCH(int, confirmed);

    QQuickItem *page = make("Item { anchors.fill: parent; property alias sheet: sheet\n"
                            " ConfirmSheet { id: sheet; title: \"Delete this draft?\"; destructive: true } }");
    QVERIFY(page);
    QObject *sheet = page->property("sheet").value<QObject *>();
    QSignalSpy confirmations(sheet, SIGNAL(confirmed()));
    QMetaObject::invokeMethod(sheet, "open");
    QTRY_VERIFY(sheet->property("opened").toBool());
    // Opened, the safe choice has the keyboard.
    QQuickItem *cancel = child(m_window->contentItem(), u"sheetCancel"_s);
    QTRY_VERIFY(cancel->hasActiveFocus());

    if (press == "Escape"_L1)
        QTest::keyClick(m_window.get(), Qt::Key_Escape);
    else
        click(child(m_window->contentItem(), press));
    QTRY_VERIFY(!sheet->property("visible").toBool());
    QCOMPARE(confirmations.size(), confirmed);
}

void TestDesignComponents::undoToast()
{
    QQuickItem *view = make("UndoToast { toast: NativeUndoToast {} }");
    QVERIFY(view);
    auto *toast = view->property("toast").value<NativeUndoToast *>();
    QVERIFY(toast);
    QSignalSpy undone(toast, &NativeUndoToast::undone);
    QVERIFY(!view->isVisible());

    toast->offer(u"Conversation archived"_s, u"room-7"_s);
    QVERIFY(view->isVisible());
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(view);
    QCOMPARE(accessible->text(QAccessible::Name), u"Conversation archived"_s);
    click(child(view, u"undo"_s));
    QCOMPARE(undone.size(), 1);
    QCOMPARE(undone.constFirst().constFirst().toString(), u"room-7"_s);
    QVERIFY(!view->isVisible());
}

void TestDesignComponents::countBadge_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("dot");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<QString>("name");

    QTest::addRow("nothing unread") << 0 << false << false << QString();
    QTest::addRow("a count") << 7 << false << true << u"7 unread"_s;
    QTest::addRow("above 99") << 120 << false << true << u"120 unread"_s;
    QTest::addRow("a dot") << 0 << true << true << u"Unread"_s;
}

void TestDesignComponents::countBadge()
{
    QFETCH(int, count);
    QFETCH(bool, dot);
    QFETCH(bool, shown);
    QFETCH(QString, name);

    QQuickItem *badge = make("CountBadge {}");
    QVERIFY(badge);
    badge->setProperty("count", count);
    badge->setProperty("dot", dot);
    QCOMPARE(badge->isVisible(), shown);
    if (!shown)
        return;
    QCOMPARE(QAccessible::queryAccessibleInterface(badge)->text(QAccessible::Name), name);
    // A pill never narrower than it is high, so one digit is a circle.
    QVERIFY(badge->width() >= badge->height());
}

void TestDesignComponents::avatarWithoutItsPhoto()
{
    QQuickItem *avatar = make("Avatar { name: \"Maren Holt\"; photo: \"file:///nowhere/at/all.png\"; size: 40 }");
    QVERIFY(avatar);
    QList<QQuickItem *> items { avatar };
    QString letters;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items.at(i)->isVisible() && items.at(i)->metaObject()->className() == QByteArrayLiteral("QQuickText"))
            letters = items.at(i)->property("text").toString();
        items += items.at(i)->childItems();
    }
    // A photo that does not load leaves the initials in its place.
    QCOMPARE(letters, u"MH"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(avatar)->text(QAccessible::Name), u"Maren Holt"_s);
}

void TestDesignComponents::searchFieldEscape()
{
    auto *field = make("SearchField { width: 240; text: \"oak\" }");
    QVERIFY(field);
    field->forceActiveFocus();
    // The first Escape empties the field and is taken; on an empty field it
    // passes on, so the screen behind can close what is open.
    QKeyEvent first(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &first);
    QCOMPARE(field->property("text").toString(), QString());
    QVERIFY(first.isAccepted());
    QKeyEvent second(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.get(), &second);
    QVERIFY(!second.isAccepted());
}

QTEST_MAIN(TestDesignComponents)
#include "tst_designcomponents.moc"
