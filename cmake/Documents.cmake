# The manual pages and the completion scripts are made from what the programs know of themselves. They
# stand in the build folder as they are installed: share/man/man1, share/bash-completion/completions ...

include(GNUInstallDirs)

# varnel_add_documents(): makes them all, and installs them.
function(varnel_add_documents)
  set(share ${CMAKE_BINARY_DIR}/share)

  add_executable(varnel_make_manual ${CMAKE_SOURCE_DIR}/tools/makeManual.cpp)
  target_link_libraries(varnel_make_manual PRIVATE varnel_flags varnel_cli)
  file(GLOB templates CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/manual/*.in)
  set(pages ${share}/man/man1/varnel.1 ${share}/man/man1/varnelctl.1)
  add_custom_command(OUTPUT ${pages}
    COMMAND varnel_make_manual ${CMAKE_SOURCE_DIR}/docs/manual ${share}/man/man1
    DEPENDS varnel_make_manual ${templates}
    COMMENT "Making the manual pages" VERBATIM)
  find_program(GZIP gzip)
  if(GZIP)
    # As distributions want them; without a time stamp, so that the same sources give the same bytes.
    set(packed "")
    foreach(page IN LISTS pages)
      add_custom_command(OUTPUT ${page}.gz
        COMMAND sh -c "\"$1\" -9nc \"$2\" >\"$2.gz\"" sh ${GZIP} ${page}
        DEPENDS ${page} VERBATIM)
      list(APPEND packed ${page}.gz)
    endforeach()
    install(FILES ${packed} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  else()
    install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endif()

  set(scripts "")
  foreach(place IN ITEMS bash:bash-completion/completions/varnelctl zsh:zsh/site-functions/_varnelctl
                         fish:fish/vendor_completions.d/varnelctl.fish)
    string(REPLACE ":" ";" place ${place})
    list(GET place 0 shell)
    list(GET place 1 script)
    cmake_path(GET script PARENT_PATH folder)
    add_custom_command(OUTPUT ${share}/${script}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${share}/${folder}
      COMMAND varnelctl completion ${shell} > ${share}/${script}
      DEPENDS varnelctl
      COMMENT "Making the completion script for ${shell}" VERBATIM)
    install(FILES ${share}/${script} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder})
    list(APPEND scripts ${share}/${script})
  endforeach()

  add_custom_target(documents ALL DEPENDS ${pages} ${packed} ${scripts})
endfunction()
