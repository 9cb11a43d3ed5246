#ifndef LINKDECK_LDKMESSAGEBOXEX_H
#define LINKDECK_LDKMESSAGEBOXEX_H

#include "ExtendDialog.h"

// The fixed-size box of the prompt-style message functions: whatever size the box computes when
// shown, it ends up m_iWidth x m_iHeight.
class LDKMessageBoxEx : public LdMessageBox
{
    Q_OBJECT
public:
    explicit LDKMessageBoxEx(QWidget *parent = nullptr)
        : LdMessageBox(parent)
    {}

    int m_iWidth = 0;
    int m_iHeight = 0;

protected:
    void showEvent(QShowEvent *event) override
    {
        LdMessageBox::showEvent(event);
        setFixedSize(m_iWidth, m_iHeight);
    }
};

#endif // LINKDECK_LDKMESSAGEBOXEX_H
