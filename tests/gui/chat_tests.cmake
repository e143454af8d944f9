# Tests of the conversation list, the search, the history and sending, all in a signed-in window.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_sealed_messages STATIC
    ../support/sealed_messages.cpp ../support/sealed_messages.h)
target_link_libraries(tideloft_sealed_messages PUBLIC tideloft_options tideloft_crypto)
add_library(tideloft_chat_fixture STATIC tst_chat_fixture.cpp tst_chat_fixture.h tst_chat_rows.h)
tideloft_when_linked(tideloft_precompile_test tideloft_chat_fixture)
target_link_libraries(tideloft_chat_fixture
    PUBLIC tideloft_ui tideloft_test_service tideloft_sealed_messages Qt6::Test)

function(tideloft_chat_test name)
    tideloft_test(${name} LIBRARIES tideloft_chat_fixture LABELS gui)
endfunction()

tideloft_chat_test(tst_conversation_list)
tideloft_chat_test(tst_conversation_list_row)
tideloft_chat_test(tst_search)
tideloft_chat_test(tst_search_buttons)
tideloft_chat_test(tst_chat_history)
tideloft_chat_test(tst_chat_days)
tideloft_chat_test(tst_chat_sealed)
tideloft_chat_test(tst_message_row)
tideloft_chat_test(tst_chat_layout)
tideloft_chat_test(tst_scroll_keys)
tideloft_chat_test(tst_back_from_server)
tideloft_chat_test(tst_send)
tideloft_chat_test(tst_send_failures)
tideloft_chat_test(tst_typing_ahead)
tideloft_chat_test(tst_send_slices)
tideloft_test(tst_list_refresh
    SOURCES tst_list_refresh.cpp tst_changing_chat.cpp tst_changing_chat.h tst_list_state.cpp tst_list_state.h
    LIBRARIES tideloft_chat_fixture LABELS gui)
tideloft_test(tst_chat_refresh SOURCES tst_chat_refresh.cpp tst_popups.cpp tst_popups.h
    LIBRARIES tideloft_chat_fixture LABELS gui)
tideloft_test(tst_history_copy SOURCES tst_history_copy.cpp tst_popups.cpp tst_popups.h
    LIBRARIES tideloft_chat_fixture LABELS gui)
tideloft_chat_test(tst_bubble_text)
