#include "LDK_Tool.h"

#include <QMouseEvent>

MouseClickedWidget::MouseClickedWidget(QWidget *pParent)
    : QLabel(pParent)
{}

MouseClickedWidget::MouseClickedWidget(QString strText, QWidget *pParent)
    : QLabel(strText, pParent)
{}

void MouseClickedWidget::SetMouseEnable(bool bEnable)
{
    m_bMouseEnable = bEnable;
    setCursor(bEnable ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void MouseClickedWidget::enterEvent(QEvent *pEvent)
{
    QLabel::enterEvent(pEvent);
    emit showLine();
}

void MouseClickedWidget::leaveEvent(QEvent *pEvent)
{
    QLabel::leaveEvent(pEvent);
    emit revertType();
}

// A reported click is taken here: passed on, the parent would act on it a second time.
void MouseClickedWidget::mouseReleaseEvent(QMouseEvent *pEvent)
{
    if (!m_bMouseEnable) {
        QLabel::mouseReleaseEvent(pEvent);
        return;
    }
    pEvent->accept();
    emit onClicked(pEvent);
}
