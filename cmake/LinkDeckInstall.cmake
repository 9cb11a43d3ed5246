# What `cmake --install` and the Debian package put under the prefix:
#   lib/libcore.so*, lib/libsdk.so*           the libraries
#   include/linkdeck/                         the core's public headers and the SDK's C headers
#   lib/cmake/LinkDeckCore/, lib/pkgconfig/   the package for plugin authors
#   lib/linkdeck/                             the application directory, laid out as build/bin
#   bin/linkdeck                              a relative link to lib/linkdeck/linkdeck
#   share/applications/, share/icons/         the desktop entry and its icon
# Every installed file is relocatable: nothing names the prefix, the source or the build tree.
include(CMakePackageConfigHelpers)

install(TARGETS core sdk EXPORT LinkDeckCoreTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${LINKDECK_INSTALL_INCLUDEDIR})
# One folder for both, so that the headers find each other by plain name.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ ${PROJECT_SOURCE_DIR}/src/sdk/include/
    DESTINATION ${LINKDECK_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h")

# find_package(LinkDeckCore): LinkDeck::core, LinkDeck::sdk and linkdeck_add_plugin.
install(EXPORT LinkDeckCoreTargets
    NAMESPACE LinkDeck::
    DESTINATION ${LINKDECK_INSTALL_CMAKEDIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/LinkDeckCoreConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/LinkDeckCoreConfig.cmake
    INSTALL_DESTINATION ${LINKDECK_INSTALL_CMAKEDIR}
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/LinkDeckCoreConfigVersion.cmake
    VERSION ${PROJECT_VERSION}
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/LinkDeckCoreConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/LinkDeckCoreConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/LinkDeckPlugin.cmake
    DESTINATION ${LINKDECK_INSTALL_CMAKEDIR})

# pkg-config finds the prefix from the file's own place, so the file moves with the prefix.
file(RELATIVE_PATH LINKDECK_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" LINKDECK_PC_TO_PREFIX "${LINKDECK_PC_TO_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/linkdeck-core.pc.in
    ${CMAKE_CURRENT_BINARY_DIR}/linkdeck-core.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/linkdeck-core.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The application directory. The sample plugins install themselves (linkdeck_add_plugin).
install(TARGETS linkdeck RUNTIME DESTINATION ${LINKDECK_INSTALL_APPDIR})
set_target_properties(linkdeck PROPERTIES INSTALL_RPATH "${LINKDECK_APPDIR_RPATH}")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/app/shipped/ DESTINATION ${LINKDECK_INSTALL_APPDIR})
# The operator list is made during the build, straight into the build's application directory.
file(RELATIVE_PATH _linkdeck_oplist ${LINKDECK_APP_DIR} ${LINKDECK_OPERATOR_LIST})
get_filename_component(_linkdeck_oplist ${_linkdeck_oplist} DIRECTORY)
install(FILES ${LINKDECK_OPERATOR_LIST} DESTINATION ${LINKDECK_INSTALL_APPDIR}/${_linkdeck_oplist})
unset(_linkdeck_oplist)

# bin/linkdeck: the core finds the application directory through /proc/self/exe, which names
# the link's target.
file(RELATIVE_PATH _linkdeck_exe /${CMAKE_INSTALL_BINDIR} /${LINKDECK_INSTALL_APPDIR}/linkdeck)
install(CODE "
    set(_bindir \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
    message(STATUS \"Installing: \${_bindir}/linkdeck -> ${_linkdeck_exe}\")
    file(MAKE_DIRECTORY \"\${_bindir}\")
    file(CREATE_LINK \"${_linkdeck_exe}\" \"\${_bindir}/linkdeck\" SYMBOLIC)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${_bindir}/linkdeck\")
")
unset(_linkdeck_exe)

install(FILES ${PROJECT_SOURCE_DIR}/app/desktop/linkdeck.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/app/desktop/linkdeck.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
