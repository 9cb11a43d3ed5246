#include "ToolBarLogic.h"
#include "ToolBarShared.h"

#include "common/CoreLogging.h"

#include <QApplication>
#include <QKeyEvent>

SearchLineEdit::SearchLineEdit(QWidget *parent)
    : QLineEdit(parent)
{}

void SearchLineEdit::keyPressEvent(QKeyEvent *event)
{
    const int iKey = event->key();
    if (iKey == Qt::Key_Up || iKey == Qt::Key_Down) {
        // A single-line box has no lines to move between: Up and Down move the cursor instead.
        event->accept();
        QKeyEvent cursorKey(QEvent::KeyPress, iKey == Qt::Key_Up ? Qt::Key_Left : Qt::Key_Right,
                            event->modifiers(), QString(), false, 1);
        QLineEdit::keyPressEvent(&cursorKey);
        return;
    }
    if (iKey == Qt::Key_N || iKey == Qt::Key_F) {
        if (QApplication::keyboardModifiers() & Qt::ControlModifier) {
            const QByteArray prefix =
                LogLine::stampedPrefix(ToolBarShared::kSource, "keyPressEvent");
            if (iKey == Qt::Key_N) {
                qCDebug(lcToolBar, "%s Cntrl N pressed in the Search Edit Box", prefix.constData());
                emit controlN();
            } else {
                qCDebug(lcToolBar, "%s Cntrl F pressed in the Search Edit Box", prefix.constData());
                emit controlF();
            }
        }
        event->accept();
    }
    QLineEdit::keyPressEvent(event);
}
