# The catalogues of po/LINGUAS: in the build folder's locale/, where programs that are not installed find them, and
# installed. Without gettext's tools the programs speak English.
find_program(MSGFMT msgfmt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/po/LINGUAS)
file(STRINGS ${PROJECT_SOURCE_DIR}/po/LINGUAS languages)

set(catalogues)
foreach(language IN LISTS languages)
    set(folder ${PROJECT_BINARY_DIR}/locale/${language}/LC_MESSAGES)
    set(source ${PROJECT_SOURCE_DIR}/po/${language}.po)
    if(NOT MSGFMT)
        break()
    endif()
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${folder}/corvane.mo COMMAND ${MSGFMT} -o ${folder}/corvane.mo ${source}
                       DEPENDS ${source} VERBATIM)
    install(FILES ${folder}/corvane.mo DESTINATION ${CMAKE_INSTALL_LOCALEDIR}/${language}/LC_MESSAGES)
    list(APPEND catalogues ${folder}/corvane.mo)
endforeach()
add_custom_target(translations ALL DEPENDS ${catalogues})
add_dependencies(corvane translations)
if(TARGET corvane-today)
    add_dependencies(corvane-today translations)
endif()
