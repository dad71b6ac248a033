# A catalogue for tests whose language is called "pseudo": every text stands in white square brackets, so that what
# goes to people without being translated is seen. Programs find it with CORVANE_LOCALE_DIR.
#
#   corvane_pseudo_catalogue(target) makes it before the target and tells where: CORVANE_PSEUDO_CATALOGUES
set(pseudo ${PROJECT_BINARY_DIR}/pseudo-locale)
file(MAKE_DIRECTORY ${pseudo}/pseudo/LC_MESSAGES)
add_custom_command(OUTPUT ${pseudo}/pseudo/LC_MESSAGES/corvane.mo
                   COMMAND msgen ${PROJECT_SOURCE_DIR}/po/corvane.pot |
                           msgfilter --keep-header sed -e "1s/^/⟦/" -e "$s/$/⟧/" |
                           msgfmt -o ${pseudo}/pseudo/LC_MESSAGES/corvane.mo -
                   DEPENDS ${PROJECT_SOURCE_DIR}/po/corvane.pot VERBATIM)
add_custom_target(pseudo_catalogue DEPENDS ${pseudo}/pseudo/LC_MESSAGES/corvane.mo)

function(corvane_pseudo_catalogue target)
    add_dependencies(${target} pseudo_catalogue)
    target_compile_definitions(${target} PRIVATE CORVANE_PSEUDO_CATALOGUES="${PROJECT_BINARY_DIR}/pseudo-locale")
endfunction()
