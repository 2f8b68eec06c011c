# `make deb`: a Debian package of the installed tree, built by CPack. Its
# library dependencies are worked out by dpkg-shlibdeps; the Qt Quick modules
# and the window system plugins are loaded at run time, so they are named here.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veltra)
set(CPACK_PACKAGE_VENDOR "The Veltra developers")
set(CPACK_PACKAGE_CONTACT "The Veltra developers <developers@veltra.app>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chromatic instrument tuner")
set(CPACK_PACKAGE_DESCRIPTION
  "Veltra listens to the microphone and shows the nearest note, its deviation in\n"
  "cents and its frequency over a scrolling pitch graph, with reference tones\n"
  "for every note and an optional piano keyboard. It suits guitars, basses,\n"
  "bowed strings, winds and voice, on phones, tablets and desktops.\n"
  "\n"
  "The package also contains veltra-cli, which runs the same engine on\n"
  "recordings or in a terminal.")
string(CONCAT CPACK_PACKAGE_DESCRIPTION ${CPACK_PACKAGE_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# CPack names the machine's own architecture; a cross build names its target's.
if(CMAKE_CROSSCOMPILING AND CMAKE_SYSTEM_PROCESSOR STREQUAL "aarch64")
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
endif()
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PROJECT_HOMEPAGE_URL})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The file chooser that imports a scale is Qt Quick Dialogs'; where the
# desktop lends none, Qt draws its own, which lists the files through the
# folder list model that the dialogs' package does not pull in itself.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "qml6-module-qtqml, qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-templates, \
qml6-module-qtquick-layouts, qml6-module-qtquick-window, qml6-module-qtqml-workerscript, qt6-qpa-plugins, \
qml6-module-qtquick-dialogs, qml6-module-qt-labs-folderlistmodel")
# Qt's own texts (its dialogs and controls) in the user's language.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n")
# Chinese and Japanese screens draw their titles bold with a CJK face that
# has a bold weight; any other CJK face serves too. A desktop set up in
# either language has one already, and everyone else is spared its 90 MB.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "fonts-noto-cjk")
include(CPack)
