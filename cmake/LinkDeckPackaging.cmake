# The Debian package: `cpack -G DEB` in the build directory gives linkdeck_<version>_<arch>.deb,
# the whole install (application, libraries, headers, package files) under /usr.
set(LINKDECK_PACKAGE_MAINTAINER "LinkDeck developers <linkdeck@velmora.invalid>"
    CACHE STRING "The Debian package's Maintainer field")

set(CPACK_PACKAGE_NAME linkdeck)
set(CPACK_PACKAGE_VENDOR "Velmora")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "Plugin-based connection manager for USB mobile-broadband devices")
# Debian's description lines stay under 80 columns; CPack indents each one.
set(CPACK_PACKAGE_DESCRIPTION
    "LinkDeck manages USB mobile-broadband devices through plugins: a main window\n\
with the address book, settings, status bar and device manager, driven by a\n\
simulated device service or by ModemManager.\n\
\n\
The package also holds the headers, the CMake package LinkDeckCore and the\n\
pkg-config file linkdeck-core for building plugins.")
set(CPACK_PACKAGE_CONTACT "${LINKDECK_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_PACKAGE_NAME linkdeck)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${LINKDECK_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION net)
# Sounds play through aplay; ModemManager drives real devices.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "alsa-utils, modemmanager")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The executable and the plugins need the package's own libcore and libsdk: dpkg-shlibdeps runs
# in the staging directory, so this relative directory is where the package holds them.
string(REGEX REPLACE "^/" "" _linkdeck_staged_libdir
       "${CPACK_PACKAGING_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${_linkdeck_staged_libdir})
unset(_linkdeck_staged_libdir)

set(CPACK_GENERATOR DEB)
include(CPack)
