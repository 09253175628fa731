# A room is a folder of src/. Its sources are found, not listed: a new file needs no second edit.

# varnel_room_sources(OUT folder...): the sources directly in those folders (not below them).
function(varnel_room_sources out)
  set(found "")
  foreach(folder IN LISTS ARGN)
    file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
    list(APPEND found ${sources})
  endforeach()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# varnel_test_program(NAME SOURCES files... LIBRARIES libs... [PRECOMPILED target] [PROPERTIES ctest properties...])
# Each test of the program is a ctest test of its own, in a process of its own. PRECOMPILED is the target
# whose precompiled headers it reads; those of varnel_test_support unless told otherwise.
include(GoogleTest OPTIONAL)
function(varnel_test_program name)
  cmake_parse_arguments(arg "" "PRECOMPILED" "SOURCES;LIBRARIES;PROPERTIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE varnel_test_flags ${arg_LIBRARIES} GTest::gtest GTest::gmock)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  if(NOT arg_PRECOMPILED)
    target_precompile_headers(${name} REUSE_FROM varnel_test_support)
  elseif(NOT arg_PRECOMPILED STREQUAL name)
    target_precompile_headers(${name} REUSE_FROM ${arg_PRECOMPILED})
  endif()
  # The list of tests is asked for by ctest itself, while other work may load the machine.
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 ${arg_PROPERTIES})
endfunction()
