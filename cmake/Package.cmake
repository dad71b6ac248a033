# The Debian package: `cpack -G DEB` in the build folder of the preset "package".
set(CPACK_PACKAGE_NAME corvane)
if(TARGET corvane-today)
    set(CPACK_PACKAGE_NAME corvane-today)
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, fonts-noto-core, xdg-utils")
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS "fonts-noto-cjk, fonts-noto-color-emoji")
endif()
set(CPACK_PACKAGE_VENDOR "Velmor")
set(CPACK_PACKAGE_CONTACT "Velmor <packages@velmor.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "tasks of today in a window, a terminal or a status bar")
set(CPACK_PACKAGE_DESCRIPTION
"Shows what is due today and what is overdue from the task store of a personal
task manager, and stays right over midnight and while another program changes
the tasks. A small window with a tray icon, and a command line that keeps
accounts, lists and tasks and writes for scripts and status bars.")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS tzdata)
include(CPack)
