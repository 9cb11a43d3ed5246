#include "TitleBar.h"
#include "TitleBarSource.h"

#include <QApplication>

void TitleBar::HideAllPopupWindow()
{
    m_listHiddenPopups.clear();
    const QWidgetList topLevels = QApplication::topLevelWidgets();
    for (QWidget *pWidget : topLevels) {
        // The dialog frame is recognised by its type; modal dialogs keep their place.
        if (pWidget == window() || !pWidget->inherits("ExtendDialog") || pWidget->isModal() ||
            pWidget->isHidden())
            continue;
        qCDebug(lcChrome, "%s :hide widget %s during hide main",
                LogLine::listPrefix(kTitleBarSource, "HideAllPopupWindow").constData(),
                LogLine::arg(pWidget->objectName()).constData());
        pWidget->hide();
        m_listHiddenPopups.append(pWidget);
    }
}

void TitleBar::RestoreAllPopupWindow()
{
    for (QWidget *pWidget : qAsConst(m_listHiddenPopups))
        pWidget->show();
}
