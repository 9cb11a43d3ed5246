#ifndef LINKDECK_DIALOGPLACEMENT_H
#define LINKDECK_DIALOGPLACEMENT_H

class QDialog;
class QWidget;

// The main window and centring on it, as the dialog frame and the message boxes need them.
namespace DialogPlacement {

// The main frame service's main window, or null.
QWidget *mainWindow();
// Puts the dialog's centre on the main window's centre; without a main window on (0, 0), so the
// dialog lands at (-width / 2, -height / 2).
void moveCentre(QDialog *pDialog);

} // namespace DialogPlacement

#endif // LINKDECK_DIALOGPLACEMENT_H
