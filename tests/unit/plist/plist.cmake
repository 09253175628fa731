# The property lists have a program of their own: it needs an independent reader to compare with, and
# it runs a second time under a locale that writes numbers with a comma.
find_package(PkgConfig REQUIRED)
pkg_check_modules(LIBPLIST REQUIRED IMPORTED_TARGET libplist-2.0)

file(GLOB plist_test_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.cpp ${CMAKE_CURRENT_LIST_DIR}/*.h)
varnel_test_program(unit_plist SOURCES ${plist_test_sources} UnitMain.cpp
  LIBRARIES varnel_test_support PkgConfig::LIBPLIST)

# ./test compiles the locale into this folder.
gtest_discover_tests(unit_plist DISCOVERY_MODE PRE_TEST TEST_SUFFIX .comma
  PROPERTIES TIMEOUT 120 ENVIRONMENT
  "LOCPATH=${CMAKE_BINARY_DIR}/locale\\;LC_ALL=de_DE.UTF-8\\;VARNEL_EXPECT_COMMA=1")
