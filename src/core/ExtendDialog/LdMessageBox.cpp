#include "ExtendDialog.h"

#include <QKeyEvent>
#include <QResizeEvent>

LdMessageBox::LdMessageBox(QWidget *parent)
    : QMessageBox(parent)
{}

void LdMessageBox::resizeEvent(QResizeEvent *event)
{
    emit changeSize(event->size());
    QMessageBox::resizeEvent(event);
}

void LdMessageBox::keyPressEvent(QKeyEvent *event)
{
    // Escape belongs to the enclosing dialog, which closes (or, with its close button disabled,
    // refuses to) whatever buttons the box has.
    if (event->matches(QKeySequence::Cancel)) {
        event->ignore();
        return;
    }
    QMessageBox::keyPressEvent(event);
}
