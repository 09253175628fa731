# The property lists have a program of their own: it needs an independent reader to compare with, and
# it runs a second time under a locale that writes numbers with a comma.
find_package(PkgConfig REQUIRED)
pkg_check_modules(LIBPLIST REQUIRED IMPORTED_TARGET libplist-2.0)

file(GLOB plist_test_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp ${CMAKE_CURRENT_LIST_DIR}/*.h)
varnel_test_program(unit_plist SOURCES ${plist_test_sources} UnitMain.cpp
  LIBRARIES varnel_test_support PkgConfig::LIBPLIST)

# ./test compiles the locale into this folder. The environment is a list, which gtest_discover_tests
# takes apart; so it is set in a file that ctest reads after the tests are known.
gtest_discover_tests(unit_plist DISCOVERY_MODE PRE_TEST TEST_SUFFIX .comma TEST_LIST plist_comma_tests
  PROPERTIES TIMEOUT 120)
set(plist_comma ${CMAKE_CURRENT_BINARY_DIR}/plist_comma.cmake)
file(WRITE ${plist_comma}
  "set_tests_properties(\${plist_comma_tests} PROPERTIES ENVIRONMENT\n"
  "  \"LOCPATH=${CMAKE_BINARY_DIR}/locale;LC_ALL=de_DE.UTF-8;VARNEL_EXPECT_COMMA=1\")\n")
set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${plist_comma})
