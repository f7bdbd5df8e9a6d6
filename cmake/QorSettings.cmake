# Compiler settings common to every room: C++20, warnings as errors, sanitizers, a fast linker where there is one;
# and where things go in the build folder and after installation.
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

add_library(qor_settings INTERFACE)
target_compile_options(qor_settings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wconversion -Wno-sign-conversion)
# Our own functions are not meant to be replaced at load time, so calls within the shared library may be direct.
add_compile_options(-fno-semantic-interposition)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(qor_settings INTERFACE -Werror)
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Version 12 sees overlapping copies in `"text" + std::string()` where there are none (GCC bug 105651). In precompiled headers
    # it also forgets which of its own warnings about them the standard library has turned off.
    target_compile_options(qor_settings INTERFACE -Wno-restrict)
    if(NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
      target_compile_options(qor_settings INTERFACE -Wno-array-bounds -Wno-stringop-overflow)
    endif()
  endif()
endif()

set(QOR_SANITIZER_ENVIRONMENT)
if(QOR_SANITIZE)
  list(JOIN QOR_SANITIZE "," _sanitizers)
  add_compile_options(-fsanitize=${_sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${_sanitizers})
  list(APPEND QOR_SANITIZER_ENVIRONMENT
    "ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/leaks-of-libraries.txt:print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1"
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/races-of-libraries.txt:halt_on_error=1:second_deadlock_stack=1")
endif()

# Tests call the code under test, they need not be fast themselves: their assertions cost a third of the compile time at -O3,
# and three quarters of it at -O2 under the sanitizers.
set(QOR_TEST_OPTIMISATION -O1)
if(QOR_SANITIZE)
  set(QOR_TEST_OPTIMISATION -O0)
endif()

find_program(QOR_MOLD mold)
mark_as_advanced(QOR_MOLD)
if(QOR_MOLD)
  add_link_options(-fuse-ld=mold)
endif()

# The programs look for their resources in ../share/qorworkbench beside their own folder, installed or not.
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/share")
file(CREATE_LINK "${PROJECT_SOURCE_DIR}/resources" "${CMAKE_BINARY_DIR}/share/qorworkbench" SYMBOLIC)
# Two parts can be installed alone: `program`, which all but the headers belong to, and `development`.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/" DESTINATION ${CMAKE_INSTALL_DATADIR}/qorworkbench
  PATTERN README.md EXCLUDE)

file(RELATIVE_PATH _libraries "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "$ORIGIN/${_libraries}" "$ORIGIN")

# What ./run builds: see qor_program.
add_custom_target(programs)
