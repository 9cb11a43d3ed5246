# linkdeck_add_plugin(NAME <name> SOURCES <file>... [FILES <file or directory>...] [LIBS <lib>...])
#
# Builds a LinkDeck plugin: the MODULE library lib<name>.so, linked to LinkDeck::core (and LIBS),
# installed into the application directory, where the core looks for plugin libraries. FILES are
# the plugin's shipped files (language files <name>_<lang>.lang, menus, images), installed into
# plugins/<name>/ of the application directory; a directory ships its contents.
#
# LinkDeck's own build and its installed package (find_package(LinkDeckCore)) share this file.
# The own build sets LINKDECK_APP_DIR, the application directory of the build tree: the library is
# built there and the files are copied there at build time, so the build runs without installing.
include_guard(GLOBAL)

# Defaults for a project that includes this file on its own; LinkDeck and its package set both.
if(NOT DEFINED LINKDECK_INSTALL_APPDIR)
    set(LINKDECK_INSTALL_APPDIR lib/linkdeck)
endif()
if(NOT DEFINED LINKDECK_APPDIR_RPATH)
    set(LINKDECK_APPDIR_RPATH "$ORIGIN/..")
endif()

function(linkdeck_add_plugin)
    cmake_parse_arguments(PARSE_ARGV 0 P "" "NAME" "SOURCES;FILES;LIBS")
    if(NOT P_NAME OR NOT P_SOURCES)
        message(FATAL_ERROR "linkdeck_add_plugin: NAME and SOURCES are required")
    endif()
    if(P_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "linkdeck_add_plugin(${P_NAME}): unknown arguments "
                            "${P_UNPARSED_ARGUMENTS}")
    endif()

    add_library(${P_NAME} MODULE ${P_SOURCES})
    target_link_libraries(${P_NAME} PRIVATE LinkDeck::core ${P_LIBS})
    target_compile_features(${P_NAME} PRIVATE cxx_std_17)
    # The core loads "lib<url>*" from the application directory, whatever the platform's prefix.
    set_target_properties(${P_NAME} PROPERTIES
        PREFIX "lib"
        AUTOMOC ON
        INSTALL_RPATH "${LINKDECK_APPDIR_RPATH}")
    install(TARGETS ${P_NAME} LIBRARY DESTINATION ${LINKDECK_INSTALL_APPDIR})

    set(files_dest plugins/${P_NAME})
    set(copy_from)
    set(copy_to)
    foreach(item IN LISTS P_FILES)
        get_filename_component(path ${item} ABSOLUTE)
        if(IS_DIRECTORY ${path})
            install(DIRECTORY ${path}/ DESTINATION ${LINKDECK_INSTALL_APPDIR}/${files_dest})
            file(GLOB_RECURSE found CONFIGURE_DEPENDS ${path}/*)
            foreach(f IN LISTS found)
                file(RELATIVE_PATH rel ${path} ${f})
                list(APPEND copy_from ${f})
                list(APPEND copy_to ${rel})
            endforeach()
        elseif(EXISTS ${path})
            install(FILES ${path} DESTINATION ${LINKDECK_INSTALL_APPDIR}/${files_dest})
            get_filename_component(name ${path} NAME)
            list(APPEND copy_from ${path})
            list(APPEND copy_to ${name})
        else()
            message(FATAL_ERROR "linkdeck_add_plugin(${P_NAME}): no file or directory ${item}")
        endif()
    endforeach()

    if(NOT LINKDECK_APP_DIR)
        return()
    endif()
    set_target_properties(${P_NAME} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${LINKDECK_APP_DIR})
    if(copy_from)
        set(outputs)
        foreach(from to IN ZIP_LISTS copy_from copy_to)
            set(out ${LINKDECK_APP_DIR}/${files_dest}/${to})
            add_custom_command(OUTPUT ${out}
                COMMAND ${CMAKE_COMMAND} -E copy_if_different ${from} ${out}
                DEPENDS ${from})
            list(APPEND outputs ${out})
        endforeach()
        add_custom_target(${P_NAME}_files ALL DEPENDS ${outputs})
        add_dependencies(${P_NAME} ${P_NAME}_files)
    endif()
    # Building this build's application builds every plugin with it.
    if(TARGET linkdeck)
        add_dependencies(linkdeck ${P_NAME})
    endif()
endfunction()
