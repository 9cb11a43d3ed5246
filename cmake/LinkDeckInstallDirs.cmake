# Where an installed LinkDeck puts its files, relative to the install prefix. The libraries stay in
# <prefix>/lib rather than a multiarch directory: the application directory <prefix>/lib/linkdeck
# sits beside them, so the executable and the plugins find them one level up.
set(CMAKE_INSTALL_LIBDIR lib CACHE PATH "Object code libraries (lib)")
include(GNUInstallDirs)

set(LINKDECK_INSTALL_APPDIR ${CMAKE_INSTALL_LIBDIR}/linkdeck)
set(LINKDECK_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/linkdeck)
set(LINKDECK_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/LinkDeckCore)

# Installed binaries find the libraries relative to themselves, wherever the prefix is:
# the libraries beside each other, the executable and the plugins from the application directory.
set(CMAKE_INSTALL_RPATH "$ORIGIN")
file(RELATIVE_PATH _linkdeck_up /${LINKDECK_INSTALL_APPDIR} /${CMAKE_INSTALL_LIBDIR})
string(REGEX REPLACE "/$" "" _linkdeck_up "${_linkdeck_up}")
set(LINKDECK_APPDIR_RPATH "$ORIGIN/${_linkdeck_up}")
unset(_linkdeck_up)
