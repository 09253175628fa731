# The SVG masters are the only artwork kept; the pictures that the program carries are made here, so
# that nothing is parsed while it starts. One run of one tool makes them all.

# varnel_add_icons(TARGET): renders resources/icons/*.svg and compiles the pictures into TARGET.
function(varnel_add_icons target)
  add_executable(varnel_render_icons ${CMAKE_SOURCE_DIR}/tools/renderIcons.cpp)
  target_link_libraries(varnel_render_icons PRIVATE varnel_flags Qt6::Gui Qt6::Svg)

  file(GLOB masters CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/icons/*.svg)
  set(out ${CMAKE_BINARY_DIR}/icons)
  set(compiled ${CMAKE_BINARY_DIR}/icons/qrc_icons.cpp)
  # Edge lengths in device pixels: 16 to 64 logical pixels at scale 1 and 2, and the steps between
  # that scale 1.5 asks for.
  set(sizes 16 20 24 32 40 48 64 96 128)
  list(JOIN sizes "," size_list)
  target_compile_definitions(${target} PRIVATE "VARNEL_ICON_SIZES=${size_list}")
  # Packed, bare pixels take a twentieth of their room, and unpack in microseconds.
  add_custom_command(OUTPUT ${compiled}
    COMMAND varnel_render_icons ${CMAKE_SOURCE_DIR}/resources/icons ${out} ${sizes}
    COMMAND Qt6::rcc --compress-algo zlib --name icons -o ${compiled} ${out}/icons.qrc
    DEPENDS varnel_render_icons ${masters}
    COMMENT "Rendering icons" VERBATIM)
  set_source_files_properties(${compiled} PROPERTIES SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
  target_sources(${target} PRIVATE ${compiled})
endfunction()
