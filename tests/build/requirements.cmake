# Configuring says what is missing: a line for each thing, and nothing of what is there.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
set(compiler "a compiler for C++20, such as GCC 12 or newer")
set(lines
    "its part Core"
    "its part Network"
    "its part Widgets"
    "its part Sql"
    "its part Test"
    "OpenSSL 3 or newer, its headers, libcrypto and libssl"
    "Boost 1.74 or newer, its headers"
    "gzip, which packs the manual pages")

# Configures with the given settings, and compares which of the lines it says.
function(expect_missing wanted)
    file(REMOVE_RECURSE "${WORK_DIR}/incomplete")
    execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${WORK_DIR}/incomplete" -G Ninja ${ARGN}
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE errors)
    set(found)
    foreach(line IN LISTS compiler lines)
        string(FIND "${errors}" "${line}" position)
        if(NOT position EQUAL -1)
            list(APPEND found "${line}")
        endif()
    endforeach()
    string(FIND "${errors}" "docs/building.md" position)
    if(result EQUAL 0 OR position EQUAL -1 OR NOT "${found}" STREQUAL "${wanted}")
        message(SEND_ERROR "With ${ARGN} expected (${wanted}), got (${found}) and ${result}: ${errors}")
    endif()
endfunction()

set(without_all)
foreach(package IN ITEMS Qt6 OpenSSL Boost)
    list(APPEND without_all -DCMAKE_DISABLE_FIND_PACKAGE_${package}=ON)
endforeach()
expect_missing("${lines}" ${without_all} -DGZIP_PROGRAM=)
expect_missing("its part Sql" -DCMAKE_DISABLE_FIND_PACKAGE_Qt6Sql=ON)
expect_missing("its part Test" -DCMAKE_DISABLE_FIND_PACKAGE_Qt6Test=ON -DBUILD_TESTING=ON)
expect_missing("Boost 1.74 or newer, its headers" -DCMAKE_DISABLE_FIND_PACKAGE_Boost=ON)

# Without a compiler nothing else is looked for.
set(ENV{CXX} "${WORK_DIR}/no-compiler")
expect_missing("${compiler}" ${without_all} -DGZIP_PROGRAM=)
