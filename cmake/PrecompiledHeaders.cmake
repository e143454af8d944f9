# Headers of the toolkit that are parsed once for many sources, because parsing them is most of the compiler's work.
# No source relies on them: what is shipped is compiled without, and so is what ./test lint looks at.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
option(TIDELOFT_PCH "Compile with pre-compiled headers" ON)

# Other compilers want the very same macros on every command line; this one asks for those that the headers look at.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU" OR CMAKE_BUILD_TYPE STREQUAL "Release")
    set(TIDELOFT_PCH OFF)
endif()

# tideloft_header_set(NAME LIBRARIES libraries... HEADERS headers...): headers for all that use these parts of the
# toolkit, and no other part that the headers ask for.
function(tideloft_header_set name)
    cmake_parse_arguments(SET "" "" "LIBRARIES;HEADERS" ${ARGN})
    if(NOT TIDELOFT_PCH)
        return()
    endif()
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "// Headers only.\n")
    add_library(${name} OBJECT "${source}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE tideloft_options ${SET_LIBRARIES})
    target_precompile_headers(${name} PRIVATE ${SET_HEADERS})
endfunction()

# Adds to OUT the parts of the toolkit that are used by whoever links the LIBRARIES.
function(tideloft_toolkit_of out)
    set(parts ${${out}})
    foreach(library IN LISTS ARGN)
        if(library MATCHES "^Qt6::")
            list(APPEND parts ${library})
        elseif(TARGET ${library})
            get_target_property(others ${library} INTERFACE_LINK_LIBRARIES)
            tideloft_toolkit_of(parts ${others})
        endif()
    endforeach()
    list(REMOVE_DUPLICATES parts)
    set(${out} ${parts} PARENT_SCOPE)
endfunction()

# Calls FUNCTION(TARGET) once the folder has said what TARGET links.
function(tideloft_when_linked function target)
    if(TIDELOFT_PCH)
        cmake_language(EVAL CODE "cmake_language(DEFER CALL ${function} ${target})")
    endif()
endfunction()
