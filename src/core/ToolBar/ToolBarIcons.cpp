#include "ToolBarLogic.h"
#include "ToolBarShared.h"

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QToolButton>

// Button icons: the enabled and disabled images, and their mirror images in right-to-left
// layouts.

void ToolBarLogic::setIcon(QToolButton *pButton, bool bActive, QString strIconPath)
{
    setMirrorIcon(pButton, bActive, strIconPath,
                  QApplication::layoutDirection() == Qt::RightToLeft);
}

void ToolBarLogic::setMirrorIcon(QToolButton *pButton, bool bActive, QString strIconPath,
                                 bool bMirror)
{
    if (!pButton)
        return;
    QPixmap pixmap(strIconPath);
    if (bMirror)
        pixmap = QPixmap::fromImage(pixmap.toImage().mirrored(true, false));
    QIcon icon;
    icon.addPixmap(pixmap, bActive ? QIcon::Active : QIcon::Disabled, QIcon::Off);
    pButton->setIcon(icon);
    pButton->setIconSize(pixmap.size());
}

void ToolBarLogic::EnableDisableItem(QString strPluginName, QList<ToolItem> &lstItems, int iId,
                                     bool bEnable)
{
    for (const ToolItem &item : qAsConst(lstItems)) {
        if (item.id != iId)
            continue;
        if (item.button) {
            const QString &strIcon = bEnable ? item.enabled : item.disabled;
            setIcon(item.button, bEnable, ToolBarShared::pluginFilePath(strPluginName, strIcon));
            item.button->setEnabled(bEnable);
        }
        return;
    }
}

void ToolBarLogic::ChangeToolBarIconDirection(QString strPluginName, QList<ToolItem> &lstItems,
                                              bool bMirror, QLabel **ppSearchIcon)
{
    for (const ToolItem &item : qAsConst(lstItems)) {
        if (!item.button)
            continue;
        setMirrorIcon(item.button, true, ToolBarShared::pluginFilePath(strPluginName, item.enabled),
                      bMirror);
        if (item.search && ppSearchIcon && *ppSearchIcon) {
            (*ppSearchIcon)
                ->setPixmap(
                    item.button->icon().pixmap(item.button->iconSize(), QIcon::Normal, QIcon::Off));
        }
    }
}
