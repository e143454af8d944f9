# What a build needs: all of it is looked for, and configuring stops with a line for each thing that is missing.
# docs/building.md lists the same.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

# tideloft_stop_without(LINES...): stops unless there are none. The blanks in front keep lines from being joined.
function(tideloft_stop_without)
    if(ARGN)
        list(JOIN ARGN "\n  " lines)
        message(FATAL_ERROR "This is missing, and docs/building.md says more about it:\n  ${lines}\n")
    endif()
endfunction()

# Without a compiler nothing else can be looked for.
macro(tideloft_require_compiler)
    include(CheckLanguage)
    check_language(CXX)
    if(NOT CMAKE_CXX_COMPILER)
        tideloft_stop_without("a compiler for C++20, such as GCC 12 or newer")
    endif()
    enable_language(CXX)
endmacro()

# Looks for everything and leaves it to the caller to ask for it once more, so that it is found there.
function(tideloft_require_libraries)
    set(missing)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 12)
        list(APPEND missing "GCC 12 or newer: this one is ${CMAKE_CXX_COMPILER_VERSION}")
    endif()
    foreach(part IN LISTS ARGN)
        find_package(Qt6 6.4 QUIET COMPONENTS ${part})
        if(NOT Qt6_FOUND OR NOT Qt6${part}_FOUND)
            list(APPEND missing "Qt 6.4 or newer, its part ${part}")
        endif()
    endforeach()
    find_package(OpenSSL 3 QUIET)
    if(NOT OPENSSL_FOUND)
        list(APPEND missing "OpenSSL 3 or newer, its headers, libcrypto and libssl")
    endif()
    find_package(Boost 1.74 QUIET)
    if(NOT Boost_FOUND)
        list(APPEND missing "Boost 1.74 or newer, its headers (Asio, Beast)")
    endif()
    find_package(Threads QUIET)
    if(NOT Threads_FOUND)
        list(APPEND missing "threads of the system")
    endif()
    find_program(GZIP_PROGRAM gzip)
    if(NOT GZIP_PROGRAM)
        list(APPEND missing "gzip, which packs the manual pages")
    endif()
    tideloft_stop_without(${missing})
endfunction()
