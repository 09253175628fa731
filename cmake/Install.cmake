# Where an installed Varnel lies: the usual places of a desktop, so that menus, icon themes and
# software centres find it without being told.

include(GNUInstallDirs)

install(TARGETS varnel varnelctl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES resources/varnel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES resources/example.varnel.varnel.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

set(icon_theme ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES resources/icons/varnel.svg DESTINATION ${icon_theme}/scalable/apps)
foreach(size 16 24 32 48 64 128)
  install(FILES ${CMAKE_BINARY_DIR}/icons/light/${size}/varnel.png
    DESTINATION ${icon_theme}/${size}x${size}/apps)
endforeach()
foreach(size 16 24 32 48 64)
  math(EXPR pixels "2 * ${size}")
  install(FILES ${CMAKE_BINARY_DIR}/icons/light/${pixels}/varnel.png
    DESTINATION ${icon_theme}/${size}x${size}@2/apps)
endforeach()

include(cmake/Package.cmake)
