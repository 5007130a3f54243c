#pragma once

#include <QQuickItem>
#include <QStringList>

// The shown items of a drawn QML tree named `name`, in tree order.
inline QList<QQuickItem *> tarnNamedItems(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> items { root };
    QList<QQuickItem *> found;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items.at(i)->objectName() == name && items.at(i)->isVisible())
            found.append(items.at(i));
        items += items.at(i)->childItems();
    }
    return found;
}

inline QStringList tarnTextsOf(const QList<QQuickItem *> &items)
{
    QStringList texts;
    for (QQuickItem *item : items)
        texts.append(item->property("text").toString());
    return texts;
}
