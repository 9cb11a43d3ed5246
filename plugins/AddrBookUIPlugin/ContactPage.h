#ifndef LINKDECK_ADDRBOOKUIPLUGIN_CONTACTPAGE_H
#define LINKDECK_ADDRBOOKUIPLUGIN_CONTACTPAGE_H

class QWidget;

// The contact page: the contact's photo (clicked: choose another picture; its delete button
// goes back to the default one) beside the contact's name. The photo's path is kept in the
// settings ("addrbook", "photo").
namespace ContactPage {
QWidget *create();
} // namespace ContactPage

#endif // LINKDECK_ADDRBOOKUIPLUGIN_CONTACTPAGE_H
