# What the window's process leaves of secrets, in files and in memory, and what one reply may cost it.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_secret_search STATIC
    ../support/secret_search.cpp ../support/secret_search.h
    ../support/private_numbers.cpp ../support/private_numbers.h)
target_link_libraries(tideloft_secret_search PUBLIC tideloft_options Qt6::Core PRIVATE OpenSSL::Crypto)
set_source_files_properties(../support/secret_search.cpp PROPERTIES COMPILE_OPTIONS -O2)

# The client as it is started, with somebody who uses it.
add_executable(traced_person traced_person.cpp traced_person.h ../e2e/endpoint_from_environment.cpp)
tideloft_when_linked(tideloft_precompile_test traced_person)
target_link_libraries(traced_person PRIVATE tideloft_app Qt6::Test)

tideloft_test(tst_secret_search LIBRARIES tideloft_sealed_messages tideloft_secret_search LABELS gui)
tideloft_test(tst_secret_traces
    LIBRARIES tideloft_test_service tideloft_sealed_messages tideloft_secret_search LABELS gui)
target_compile_definitions(tst_secret_traces PRIVATE TRACED_PERSON_PROGRAM="$<TARGET_FILE:traced_person>")
add_dependencies(tst_secret_traces traced_person)

# A sanitizer's own books are terabytes, and it keeps what was freed. So does valgrind, which knows these tests by
# their label.
if(NOT TIDELOFT_SANITIZE)
    tideloft_test(tst_forgotten_history
        LIBRARIES tideloft_chat_fixture tideloft_memory_scan LABELS gui freed-memory)
    tideloft_test(tst_window_memory_scan
        LIBRARIES tideloft_chat_fixture tideloft_memory_scan tideloft_secret_search LABELS gui freed-memory)
endif()
tideloft_test(tst_hostile_numbers LIBRARIES tideloft_rail_probe LABELS gui)
