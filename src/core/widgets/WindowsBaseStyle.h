#ifndef LINKDECK_WINDOWSBASESTYLE_H
#define LINKDECK_WINDOWSBASESTYLE_H

#include <QStyle>

// The toolkit's Windows style that LDKStyle and WinClassic refine.
QStyle *createWindowsBaseStyle();

// Disabled text is drawn flat, not etched, in both of the core's styles.
inline bool isEtchDisabledTextHint(QStyle::StyleHint hint)
{
    return hint == QStyle::SH_EtchDisabledText;
}

#endif // LINKDECK_WINDOWSBASESTYLE_H
