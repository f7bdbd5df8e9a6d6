# Fuzzers. The tree is configured twice: the main build (any compiler) replays the corpus and runs the fuzzers, the
# fuzzers' own build (QOR_FUZZING: clang, libFuzzer, AddressSanitizer, UndefinedBehaviourSanitizer) builds them and
# the rooms that they link, nothing else. The main build drives the other one.

# qor_fuzz(<name> [SOURCES <files…>] [LINKS <targets…>])
# tests/fuzz/<name>.cpp with its LLVMFuzzerTestOneInput. LINKS the room of the reader, or, where that room is large,
# SOURCES the few files that the reader needs. Gives the tests fuzz.<name> (five seconds of new inputs, kept in
# build/fuzz/found/<name> between runs) and fuzz.<name>.replay (the seeds).
function(qor_fuzz name)
  cmake_parse_arguments(FUZZ "" "" "SOURCES;LINKS" ${ARGN})
  set(seeds "${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name}")
  if(QOR_FUZZING)
    add_executable(fuzz_${name} ${name}.cpp ${FUZZ_SOURCES})
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers fuzz_${name})
  else()
    add_executable(fuzz_${name}_replay ${name}.cpp ${FUZZ_SOURCES} replay.cpp)
    qor_add_test(fuzz.${name}.replay COMMAND fuzz_${name}_replay "${seeds}")
  endif()
  foreach(target fuzz_${name} fuzz_${name}_replay)
    if(TARGET ${target})
      target_link_libraries(${target} PRIVATE qor_settings ${FUZZ_LINKS})
      target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/QorRdgView")
    endif()
  endforeach()
  if(QOR_BUILD_FUZZERS)
    set(found "${QOR_FUZZ_DIR}/found/${name}")
    file(MAKE_DIRECTORY "${found}")
    set(options -max_total_time=5 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1
      "-artifact_prefix=${QOR_FUZZ_DIR}/found/${name}-")
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${name}.dict")
      list(APPEND options "-dict=${CMAKE_CURRENT_SOURCE_DIR}/${name}.dict")
    endif()
    qor_add_test(fuzz.${name} LABELS fuzz
      COMMAND "${QOR_FUZZ_DIR}/bin/fuzz_${name}" ${options} "${found}" "${seeds}")
  endif()
endfunction()

# qor_fuzz_build(): in the main build, with QOR_BUILD_FUZZERS, the target that configures and builds the other one;
# in the other one, the target `fuzzers`.
macro(qor_fuzz_build)
  if(QOR_FUZZING)
    add_custom_target(fuzzers)
  elseif(QOR_BUILD_FUZZERS)
    set(QOR_FUZZ_DIR "${CMAKE_BINARY_DIR}/fuzz")
    find_program(QOR_CLANG NAMES clang++ clang++-14 REQUIRED)
    cmake_host_system_information(RESULT _cores QUERY NUMBER_OF_LOGICAL_CORES)
    add_custom_target(fuzzers ALL USES_TERMINAL VERBATIM COMMENT "Building the fuzzers"
      COMMAND ${CMAKE_COMMAND} -G Ninja -S "${PROJECT_SOURCE_DIR}" -B "${QOR_FUZZ_DIR}" --log-level=WARNING
        -DQOR_FUZZING=ON -DCMAKE_CXX_COMPILER=${QOR_CLANG} -DCMAKE_BUILD_TYPE=RelWithDebInfo
        "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -gline-tables-only"
        "-DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}" > /dev/null
      COMMAND ${CMAKE_COMMAND} --build "${QOR_FUZZ_DIR}" --target fuzzers -- --quiet -j ${_cores})
  endif()
endmacro()
