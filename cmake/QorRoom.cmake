# Functions that declare what the tree is made of. A room's tests and benchmarks stand in tests/ and benchmarks/ under
# the room's path below QorRdgView or workbench (tests/platform/dialog, tests/document); those of rooms that are not
# built are left out.

# qor_room(<target> SOURCES <files…> [PUBLIC <targets…>] [PRIVATE <targets…>] [OPTIONS <…>] [INCLUDE_ROOT <dir>])
# One room of the tree as one static target. PUBLIC names the rooms and libraries that its headers use,
# PRIVATE those that only its bodies use, OPTIONS what the compiler is told for this room alone. INCLUDE_ROOT is the
# folder that its includes are written from.
# A room of QorRdgView becomes a part of the shared library of that name.
function(qor_room target)
  cmake_parse_arguments(ROOM "" "INCLUDE_ROOT" "SOURCES;PUBLIC;PRIVATE;OPTIONS" ${ARGN})
  add_library(${target} STATIC ${ROOM_SOURCES})
  target_include_directories(${target} PUBLIC "${ROOM_INCLUDE_ROOT}")
  target_link_libraries(${target} PUBLIC ${ROOM_PUBLIC} PRIVATE qor_settings ${ROOM_PRIVATE})
  target_compile_options(${target} PRIVATE ${ROOM_OPTIONS})
  qor_precompile(${target})
  _qor_register_room(room)
  if(room MATCHES "^QorRdgView/")
    set_property(GLOBAL APPEND PROPERTY QOR_RDG_VIEW_ROOMS ${target})
  endif()
endfunction()

# qor_program(<target> SOURCES <files…> LINKS <targets…>): an executable in build/bin. Those of the workbench are
# installed and belong to the target `programs`.
function(qor_program target)
  cmake_parse_arguments(PROGRAM "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${target} ${PROGRAM_SOURCES})
  target_link_libraries(${target} PRIVATE qor_settings ${PROGRAM_LINKS})
  _qor_refuse_two_copies(${target})
  _qor_register_room(room)
  if(room MATCHES "^workbench/")
    add_dependencies(programs ${target})
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endfunction()

# qor_test(<target> SOURCES <files…> LINKS <targets…> [TIMEOUT <s>] [ENVIRONMENT <…>] [DISPLAY] [ONE_THREAD])
# A GoogleTest program, registered with CTest as one test of that name. DISPLAY runs it on a display of its own and
# gives it the label `display`. ONE_THREAD says that it never starts a thread: ThreadSanitizer, which then has nothing to
# see, goes without it.
function(qor_test target)
  cmake_parse_arguments(TEST "DISPLAY;ONE_THREAD" "TIMEOUT" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
  add_executable(${target} ${TEST_SOURCES})
  target_link_libraries(${target} PRIVATE qor_settings qor_test_support ${TEST_LINKS} GTest::gtest_main)
  qor_precompile(${target} TEST)
  target_compile_options(${target} PRIVATE ${QOR_TEST_OPTIMISATION})
  _qor_refuse_two_copies(${target})
  if(TEST_ONE_THREAD AND "thread" IN_LIST QOR_SANITIZE)
    set_target_properties(${target} PROPERTIES EXCLUDE_FROM_ALL ON)
    return()
  endif()
  set(command ${target})
  set(labels)
  if(TEST_DISPLAY)
    set(command "${PROJECT_SOURCE_DIR}/tools/with-display" $<TARGET_FILE:${target}>)
    set(labels display)
  endif()
  qor_add_test(${target} COMMAND ${command} LABELS ${labels} TIMEOUT "${TEST_TIMEOUT}" ENVIRONMENT ${TEST_ENVIRONMENT})
endfunction()

# qor_add_test(<name> COMMAND <command…> [TIMEOUT <s>] [ENVIRONMENT <…>] [LABELS <…>])
# Registers any command with CTest, with the project's time limit (120 s unless TIMEOUT says otherwise, three times
# that under a sanitizer) and the sanitizers' options. Those that may take longest begin first.
function(qor_add_test name)
  cmake_parse_arguments(TEST "" "TIMEOUT" "COMMAND;ENVIRONMENT;LABELS" ${ARGN})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 120)
  endif()
  if(QOR_SANITIZE)
    math(EXPR TEST_TIMEOUT "${TEST_TIMEOUT} * 3")
  endif()
  add_test(NAME ${name} COMMAND ${TEST_COMMAND})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${TEST_TIMEOUT} COST ${TEST_TIMEOUT} LABELS "${TEST_LABELS}"
    ENVIRONMENT "${QOR_SANITIZER_ENVIRONMENT};${TEST_ENVIRONMENT}")
endfunction()

# qor_benchmark(<target> SOURCES <files…> LINKS <targets…>): a Google Benchmark program in build/bin, run by hand.
function(qor_benchmark target)
  cmake_parse_arguments(BENCHMARK "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${target} ${BENCHMARK_SOURCES})
  target_link_libraries(${target} PRIVATE qor_settings ${BENCHMARK_LINKS} benchmark::benchmark_main)
  _qor_refuse_two_copies(${target})
endfunction()

# qor_add_rooms([BESIDE <folders…>]): adds, in the current folder of tests/ or benchmarks/, the folders of all rooms
# that are built. A folder that mirrors no room and is not in one of BESIDE is an error, for nobody would ever run it.
function(qor_add_rooms)
  cmake_parse_arguments(ROOMS "" "" "BESIDE" ${ARGN})
  file(GLOB_RECURSE lists RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" CONFIGURE_DEPENDS */CMakeLists.txt)
  foreach(list ${lists})
    get_filename_component(folder "${list}" DIRECTORY)
    string(REGEX REPLACE "/.*" "" top "${folder}")
    if(NOT top IN_LIST ROOMS_BESIDE AND NOT IS_DIRECTORY "${PROJECT_SOURCE_DIR}/QorRdgView/${folder}"
        AND NOT IS_DIRECTORY "${PROJECT_SOURCE_DIR}/workbench/${folder}")
      message(FATAL_ERROR "${CMAKE_CURRENT_SOURCE_DIR}/${folder} belongs to no room: "
        "there is neither QorRdgView/${folder} nor workbench/${folder}")
    endif()
  endforeach()
  get_property(rooms GLOBAL PROPERTY QOR_ROOMS)
  foreach(room ${rooms})
    string(REGEX REPLACE "^[^/]+/(.*)$" "\\1" folder "${room}")
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt")
      add_subdirectory(${folder})
    endif()
  endforeach()
endfunction()

# Notes the current folder as a room that is built and gives its path from the top.
function(_qor_register_room out)
  file(RELATIVE_PATH room "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
  get_property(known GLOBAL PROPERTY QOR_ROOMS)
  if(room MATCHES "^(QorRdgView|workbench)/" AND NOT room IN_LIST known)
    set_property(GLOBAL APPEND PROPERTY QOR_ROOMS ${room})
  endif()
  set(${out} ${room} PARENT_SCOPE)
endfunction()

# A program that links both the shared library and a static room of it would have that room's statics twice, and
# fail in ways that are hard to read. This says so while configuring.
function(_qor_refuse_two_copies program)
  set(todo ${program})
  set(seen)
  while(todo)
    list(POP_FRONT todo target)
    string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" target "${target}")
    if(NOT TARGET "${target}" OR target IN_LIST seen)
      continue()
    endif()
    list(APPEND seen ${target})
    if(NOT target STREQUAL "QorRdgView")
      set(properties INTERFACE_LINK_LIBRARIES)
      if(target STREQUAL program)
        list(APPEND properties LINK_LIBRARIES)
      endif()
      foreach(property ${properties})
        get_target_property(links ${target} ${property})
        if(links)
          list(APPEND todo ${links})
        endif()
      endforeach()
    endif()
  endwhile()
  if(NOT "QorRdgView" IN_LIST seen)
    return()
  endif()
  get_property(rooms GLOBAL PROPERTY QOR_RDG_VIEW_ROOMS)
  foreach(room ${rooms})
    if(room IN_LIST seen)
      message(FATAL_ERROR "${program} links ${room} and QorRdgView, which holds it already")
    endif()
  endforeach()
endfunction()
