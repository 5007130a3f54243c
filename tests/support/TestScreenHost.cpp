#include "support/TestScreenHost.h"

#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QQmlComponent>
#include <QTest>

using namespace Qt::StringLiterals;

TestScreenHost::TestScreenHost()
    : m_settings(m_folder.filePath(u"prefs.ini"_s), QSettings::IniFormat)
    , m_theme(std::make_unique<NativeTheme>(m_settings))
{
    m_theme->attach(m_engine);
    window.resize(1100, 800);
}

TestScreenHost::~TestScreenHost() = default;

QString TestScreenHost::show(const QByteArray &source, const QString &property, QObject *state)
{
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return u"The window was never shown."_s;
    QQmlComponent component(&m_engine);
    component.setData(source, QUrl());
    m_screen.reset(component.createWithInitialProperties({ { property, QVariant::fromValue(state) } }));
    auto *item = qobject_cast<QQuickItem *>(m_screen.get());
    if (!item)
        return component.errorString();
    item->setParentItem(window.contentItem());
    item->setSize(window.size());
    return {};
}

QList<QQuickItem *> TestScreenHost::shown(const QString &name) const
{
    return tarnNamedItems(window.contentItem(), name);
}

void TestScreenHost::click(QQuickItem *item, QPointF at)
{
    QTest::mouseClick(&window, Qt::LeftButton, {}, item->mapToScene(at).toPoint());
}
