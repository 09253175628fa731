# Compile and link flags in two interface targets, so that no target sets its own: varnel_flags for
# programs, varnel_test_flags for what only tests them.

set(VARNEL_SANITIZE "" CACHE STRING "Sanitizers, comma separated (address,undefined)")
option(VARNEL_FUZZ "Build the libFuzzer targets" OFF)
# Off for who only builds: a newer compiler with a new warning must not keep anybody from the programs.
option(VARNEL_WARNINGS_AS_ERRORS "Stop at the compiler's warnings" OFF)

add_library(varnel_checks INTERFACE)
add_library(varnel_flags INTERFACE)
add_library(varnel_test_flags INTERFACE)
target_link_libraries(varnel_flags INTERFACE varnel_checks)
target_link_libraries(varnel_test_flags INTERFACE varnel_checks)

# A test is compiled more often than it is run: not optimizing halves the time that takes.
target_compile_options(varnel_test_flags INTERFACE -O0 -U_FORTIFY_SOURCE)

target_compile_options(varnel_checks INTERFACE
  -Wall -Wextra -Wpedantic $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow> -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wformat=2 -Wnull-dereference
  -Wimplicit-fallthrough -Winvalid-pch $<$<BOOL:${VARNEL_WARNINGS_AS_ERRORS}>:-Werror>)

# g++ looks for null pointers only after inlining, in release builds, and then also finds them in its
# own standard library and behind every pointer that a factory made: told, but no reason to stop.
target_compile_options(varnel_checks INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-error=null-dereference>)

# Precompiled headers are good only for who compiles with the settings that they were made with. Left to
# themselves, libraries are compiled with -fPIC and programs with -fPIE, and only some with -pthread: what
# CMake, Qt and GLib ask for differs between them and from one release to the next.
target_compile_options(varnel_checks INTERFACE -fPIC -pthread)

# No silent casts between bytes and text: every conversion in this program names its encoding.
target_compile_definitions(varnel_checks INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH QT_STRICT_ITERATORS QT_USE_QSTRINGBUILDER
  QT_DISABLE_DEPRECATED_BEFORE=0x060400 VARNEL_VERSION="${PROJECT_VERSION}")

if(VARNEL_SANITIZE)
  target_compile_options(varnel_checks INTERFACE
    -fsanitize=${VARNEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(varnel_checks INTERFACE -fsanitize=${VARNEL_SANITIZE})
else()
  # Everything that may be handed to people. Without optimization no library call could be checked.
  set(optimized $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  set(hardening -fstack-protector-strong -fstack-clash-protection -fcf-protection -U_FORTIFY_SOURCE
    -D_FORTIFY_SOURCE=2)
  target_compile_options(varnel_flags INTERFACE "$<${optimized}:${hardening}>")
  target_link_options(varnel_flags INTERFACE "$<${optimized}:-Wl,-z,relro,-z,now>")
endif()
if(VARNEL_FUZZ)
  # The fuzzer learns from what the code compares; what the libraries take for granted is asserted.
  target_compile_options(varnel_checks INTERFACE -fsanitize=fuzzer-no-link)
  target_compile_definitions(varnel_checks INTERFACE QT_FORCE_ASSERTS _GLIBCXX_ASSERTIONS)
endif()
target_link_options(varnel_checks INTERFACE -Wl,--as-needed)

# The undefined-behaviour checks lay out a million addresses. A program that may be loaded anywhere puts
# each of them right at each start: half of the time of a short run.
if(VARNEL_SANITIZE)
  set(CMAKE_POSITION_INDEPENDENT_CODE OFF)
else()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
endif()
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
