# qor_room(<target> SOURCES <files…> [PUBLIC <targets…>] [PRIVATE <targets…>] [INCLUDE_ROOT <dir>])
# One room of the tree as one static target. PUBLIC names the rooms and libraries that its headers use,
# PRIVATE those that only its bodies use. INCLUDE_ROOT is the folder that its includes are written from.
function(qor_room target)
  cmake_parse_arguments(ROOM "" "INCLUDE_ROOT" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${target} STATIC ${ROOM_SOURCES})
  target_include_directories(${target} PUBLIC "${ROOM_INCLUDE_ROOT}")
  target_link_libraries(${target} PUBLIC ${ROOM_PUBLIC} PRIVATE qor_settings ${ROOM_PRIVATE})
endfunction()

# qor_program(<target> SOURCES <files…> LINKS <targets…>): an executable in build/bin.
function(qor_program target)
  cmake_parse_arguments(PROGRAM "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${target} ${PROGRAM_SOURCES})
  target_link_libraries(${target} PRIVATE qor_settings ${PROGRAM_LINKS})
endfunction()

# qor_test(<target> SOURCES <files…> LINKS <targets…> [TIMEOUT <s>] [ENVIRONMENT <…>]): a GoogleTest program,
# registered with CTest as one test of that name.
function(qor_test target)
  cmake_parse_arguments(TEST "" "TIMEOUT" "SOURCES;LINKS;ENVIRONMENT" ${ARGN})
  add_executable(${target} ${TEST_SOURCES})
  target_link_libraries(${target} PRIVATE qor_settings ${TEST_LINKS} GTest::gtest_main)
  add_test(NAME ${target} COMMAND ${target})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 120)
  endif()
  set_tests_properties(${target} PROPERTIES TIMEOUT ${TEST_TIMEOUT} ENVIRONMENT "${TEST_ENVIRONMENT}")
endfunction()
