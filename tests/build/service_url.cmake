# Which origins configuring takes, and which it refuses.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
list(APPEND CMAKE_MODULE_PATH "${SOURCE_DIR}/cmake")
include(ServiceUrl)

function(expect url accepted)
    tideloft_parse_service_url("${url}" host error)
    if(error)
        set(got REFUSED)
    else()
        set(got ACCEPTED)
    endif()
    if(NOT got STREQUAL accepted)
        message(SEND_ERROR "\"${url}\" was ${got}, not ${accepted} (${error})")
    endif()
endfunction()

expect("https://localhost:8443" ACCEPTED)
expect("https://chat.example.org" ACCEPTED)
expect("https://10.0.0.7:443" ACCEPTED)
expect("https://[2001:db8::1]:8443" ACCEPTED)
expect("http://127.0.0.1:8080" ACCEPTED)
expect("http://[::1]:8080" ACCEPTED)
expect("http://localhost" ACCEPTED)
expect("https://localhost:8443/" REFUSED)
expect("https://chat.example.org/api" REFUSED)
expect("https://chat.example.org?x" REFUSED)
expect("https://user@chat.example.org" REFUSED)
expect("https://chat.example.org:0" REFUSED)
expect("https://chat.example.org:65536" REFUSED)
expect("https://chat.example.org:" REFUSED)
expect("http://chat.example.org" REFUSED)
expect("http://127.0.0.1.example.org" REFUSED)
expect("http://localhost.example.org" REFUSED)
expect("HTTPS://chat.example.org" REFUSED)
expect("ftp://chat.example.org" REFUSED)
expect("chat.example.org" REFUSED)
expect("https://" REFUSED)
expect("https://a\"b" REFUSED)
expect("" REFUSED)

# Configures the project with the given settings and compares what it says. The settings are refused before
# anything is looked for, so this costs no time.
function(expect_configure_error message)
    file(REMOVE_RECURSE "${WORK_DIR}/refused")
    execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${WORK_DIR}/refused" -G Ninja ${ARGN}
        RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE errors)
    string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
    string(FIND "${errors}" "${message}" position)
    if(result EQUAL 0 OR position EQUAL -1)
        message(SEND_ERROR "Expected to be refused with \"${message}\", got ${result}: ${errors}")
    endif()
endfunction()

file(WRITE "${WORK_DIR}/authority.pem" "-----BEGIN CERTIFICATE-----\n")
file(WRITE "${WORK_DIR}/empty.pem" "")
expect_configure_error("it must be an https origin without path or trailing slash"
    -DTIDELOFT_SERVICE_URL=https://chat.example.org/)
expect_configure_error("plain http is accepted for 127.0.0.1, [::1] and localhost only"
    -DTIDELOFT_SERVICE_URL=http://chat.example.org)
expect_configure_error("TIDELOFT_TRUST_CA is for a service on this machine only"
    -DTIDELOFT_SERVICE_URL=https://chat.example.org "-DTIDELOFT_TRUST_CA=${WORK_DIR}/authority.pem")
expect_configure_error("TIDELOFT_TRUST_CA has no place in a release build"
    -DCMAKE_BUILD_TYPE=Release "-DTIDELOFT_TRUST_CA=${WORK_DIR}/authority.pem")
expect_configure_error("TIDELOFT_TRUST_CA has no place in a release build"
    -DCMAKE_BUILD_TYPE=release "-DTIDELOFT_TRUST_CA=${WORK_DIR}/authority.pem")
expect_configure_error("TIDELOFT_TRUST_CA has no place in a release build"
    -DCMAKE_BUILD_TYPE=MinSizeRel "-DTIDELOFT_TRUST_CA=${WORK_DIR}/authority.pem")
expect_configure_error("which is no file" "-DTIDELOFT_TRUST_CA=${WORK_DIR}/missing.pem")
expect_configure_error("which holds no PEM certificate" "-DTIDELOFT_TRUST_CA=${WORK_DIR}/empty.pem")
