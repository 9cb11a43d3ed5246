#include "LDK_Tool.h"

#include "LdkToolLog.h"

#include <QMouseEvent>

ComboBox::ComboBox(QWidget *pParent)
    : QComboBox(pParent)
{}

// Another widget's click opens the list as a click on the box would.
void ComboBox::onMousePressed(QMouseEvent *pEvent)
{
    if (!pEvent) {
        LdkToolLog::argIsNull("onMousePressed", __LINE__);
        return;
    }
    QComboBox::mousePressEvent(pEvent);
}
