# The Debian package, made by `cpack` in a release build folder; checks/package makes and checks it.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME varnel)
set(CPACK_PACKAGE_CONTACT "The Varnel authors <authors@varnel.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Editor for the hidden settings of Mac home folders")
set(CPACK_PACKAGE_DESCRIPTION
  "Varnel edits the settings that a Mac keeps in its owner's home folder but
shows in no preference pane: on a mounted disk, on a file server, in a restored
backup or in a user template. What is not asked to change stays byte for byte;
what was there before goes into a backup file, from which it can be put back.
This package has the window (varnel) and the command for scripts and for many
homes (varnelctl).")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://varnel.example/")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries that the programs are linked to, with the versions that they need.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What the programs run or load by name: packaging/packages.tsv, purpose "run", has the reasons.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libexpat1, libsqlite3-0 (>= 3.31), psmisc")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "fonts-dejavu-core | fonts-freefont-ttf, libglib2.0-bin, libxcb-ewmh2, qt6-image-formats-plugins, qt6-svg-plugins | libqt6svg6, qt6-wayland, xdg-utils")
# Executables as the distribution's own packages have them, whatever umask they were built under.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(doc_folder ${CMAKE_INSTALL_DATADIR}/doc/varnel)
install(FILES packaging/deb/copyright DESTINATION ${doc_folder})
find_program(GZIP gzip)
if(GZIP)
  # Without a time stamp, so that the same sources give the same package.
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/changelog.gz
    COMMAND sh -c "\"$1\" -9nc \"$2\" >\"$3\"" sh ${GZIP}
      ${CMAKE_SOURCE_DIR}/packaging/deb/changelog ${CMAKE_BINARY_DIR}/changelog.gz
    DEPENDS packaging/deb/changelog VERBATIM)
  add_custom_target(varnel_changelog ALL DEPENDS ${CMAKE_BINARY_DIR}/changelog.gz)
  install(FILES ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${doc_folder})
endif()

include(CPack)
