#include "LDKStyle.h"

#include "WindowsBaseStyle.h"

WinClassic::WinClassic()
    : QProxyStyle(createWindowsBaseStyle())
{}

int WinClassic::styleHint(QStyle::StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *returnData) const
{
    if (isEtchDisabledTextHint(hint))
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}
