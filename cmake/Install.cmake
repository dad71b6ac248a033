# What `cmake --install` puts where. Without Qt only what belongs to the command line.
include(GNUInstallDirs)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(built ${PROJECT_BINARY_DIR}/packaging)
file(MAKE_DIRECTORY ${built})

# A desktop entry or metainfo with its texts in every language; in English alone where there are no catalogues.
#
#   corvane_translated(NAME --desktop) makes packaging/NAME of the build from packaging/NAME.in
file(GLOB language_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/po/*.po)
find_program(MSGFMT msgfmt)
function(corvane_translated name kind)
    if(language_files AND MSGFMT AND EXISTS ${PROJECT_SOURCE_DIR}/po/LINGUAS)
        set(command ${MSGFMT} ${kind} --template ${packaging}/${name}.in -d ${PROJECT_SOURCE_DIR}/po -o ${built}/${name})
    else()
        set(command ${CMAKE_COMMAND} -E copy ${packaging}/${name}.in ${built}/${name})
    endif()
    add_custom_command(OUTPUT ${built}/${name} COMMAND ${command} DEPENDS ${packaging}/${name}.in ${language_files} VERBATIM)
    set_property(GLOBAL APPEND PROPERTY CORVANE_PACKAGING_FILES ${built}/${name})
endfunction()

# A manual page, where there is a program that sets it. Pages carry no date: every build gives the same bytes.
find_program(SCDOC scdoc)
function(corvane_man_page name section)
    if(NOT SCDOC)
        return()
    endif()
    set(source ${PROJECT_SOURCE_DIR}/docs/man/${name}.${section}.scd)
    set(page ${built}/${name}.${section})
    add_custom_command(OUTPUT ${page}
                       COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0
                               sh -c [["$0" <"$1" >"$2"]] ${SCDOC} ${source} ${page}
                       DEPENDS ${source} VERBATIM)
    set_property(GLOBAL APPEND PROPERTY CORVANE_PACKAGING_FILES ${page})
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
endfunction()

install(TARGETS corvane RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${packaging}/completions/corvane.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME corvane)
install(FILES ${packaging}/completions/corvane.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
# Debian's zsh looks elsewhere for what packages bring.
set(zsh_folder site-functions)
if(CMAKE_INSTALL_PREFIX STREQUAL /usr AND EXISTS /etc/debian_version)
    set(zsh_folder vendor-completions)
endif()
install(FILES ${packaging}/completions/_corvane DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${zsh_folder})
corvane_man_page(corvane 1)
corvane_man_page(corvane-store 5)

if(TARGET corvane-today)
    install(TARGETS corvane-today RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    corvane_man_page(corvane-today 1)
    set(id com.velmor.CorvaneToday)
    corvane_translated(${id}.desktop --desktop)
    corvane_translated(${id}.UrlHandler.desktop --desktop)
    corvane_translated(${id}.metainfo.xml --xml)
    install(FILES ${built}/${id}.desktop ${built}/${id}.UrlHandler.desktop
            DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${built}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    configure_file(${packaging}/${id}.service.in ${built}/${id}.service @ONLY)
    install(FILES ${built}/${id}.service DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
    configure_file(${packaging}/corvane-today.service.in ${built}/corvane-today.service @ONLY)
    # systemd looks in lib, whatever the library directory of the architecture is.
    install(FILES ${built}/corvane-today.service DESTINATION lib/systemd/user)
    set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
    install(FILES ${packaging}/icons/${id}.svg DESTINATION ${icons}/scalable/apps)
    install(FILES ${packaging}/icons/${id}-symbolic.svg DESTINATION ${icons}/symbolic/apps)
endif()

get_property(files GLOBAL PROPERTY CORVANE_PACKAGING_FILES)
add_custom_target(packaging_files ALL DEPENDS ${files})
