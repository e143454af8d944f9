# One source, two programs: with TIDELOFT_FUZZ the fuzzer that goes on finding inputs, otherwise a test that
# replays the ones that were kept.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
option(TIDELOFT_FUZZ "Build the fuzzers instead of the replays of what they found; needs clang" OFF)
if(TIDELOFT_FUZZ AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "TIDELOFT_FUZZ needs clang++, and the compiler is ${CMAKE_CXX_COMPILER_ID}.")
endif()

# The main() of every replay, compiled once.
if(NOT TIDELOFT_FUZZ)
    add_library(tideloft_fuzz_replay OBJECT replay_main.cpp)
    target_link_libraries(tideloft_fuzz_replay PRIVATE tideloft_options)
endif()

# tideloft_fuzz_target(NAME LIBRARIES libraries... MUTATOR sources...): the target in NAME.cpp, with the
# inputs in corpus/NAME. MUTATOR is part of the fuzzer alone.
function(tideloft_fuzz_target name)
    cmake_parse_arguments(FUZZ "" "" "LIBRARIES;MUTATOR" ${ARGN})
    if(TIDELOFT_FUZZ)
        set(program fuzz_${name})
        add_executable(${program} ${name}.cpp ${FUZZ_MUTATOR})
        target_link_options(${program} PRIVATE -fsanitize=fuzzer)
        add_dependencies(fuzzers ${program})
    else()
        set(program fuzz_replay_${name})
        add_executable(${program} ${name}.cpp)
        target_link_libraries(${program} PRIVATE tideloft_fuzz_replay)
        target_compile_definitions(${program} PRIVATE TIDELOFT_FUZZ_REPLAY)
        tideloft_when_linked(tideloft_precompile_room ${program})
        add_test(NAME ${program} COMMAND ${program} "${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name}")
        set_tests_properties(${program} PROPERTIES TIMEOUT 120 LABELS fuzz)
    endif()
    set_target_properties(${program} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${program} PRIVATE tideloft_options ${FUZZ_LIBRARIES})
endfunction()
