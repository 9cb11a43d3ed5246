#ifndef LINKDECK_CALLUIPLUGIN_CALLDIALOG_H
#define LINKDECK_CALLUIPLUGIN_CALLDIALOG_H

#include "ExtendDialog.h"

class QLabel;

// The framed, non-modal call screen: whom we are calling and a button to hang up.
class CallDialog : public ExtendDialog
{
    Q_OBJECT
public:
    explicit CallDialog(QWidget *pParent);

    void showCall(const QString &number);

private:
    QLabel *m_pNumber;
};

#endif // LINKDECK_CALLUIPLUGIN_CALLDIALOG_H
