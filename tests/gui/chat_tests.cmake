# Tests of the conversation list, the search, the history and sending, all in a signed-in window.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_sealed_messages STATIC
    ../support/sealed_messages.cpp ../support/sealed_messages.h)
tideloft_when_linked(tideloft_precompile_test tideloft_sealed_messages)
target_link_libraries(tideloft_sealed_messages PUBLIC tideloft_options tideloft_crypto)
add_library(tideloft_chat_fixture STATIC tst_chat_fixture.cpp tst_chat_fixture.h)
tideloft_when_linked(tideloft_precompile_test tideloft_chat_fixture)
target_link_libraries(tideloft_chat_fixture
    PUBLIC tideloft_ui tideloft_test_service tideloft_sealed_messages tideloft_page_window Qt6::Test)

tideloft_tests(gui_chat_tests
    TESTS tst_back_from_server tst_chat_days tst_chat_history tst_chat_refresh
        tst_chat_sealed tst_list_refresh
        tst_scroll_keys tst_search tst_search_buttons tst_send tst_send_failures tst_send_slices
        tst_typing_ahead tst_unfinished_history tst_unseen_conversations
    SOURCES tst_changing_chat.cpp tst_changing_chat.h tst_list_state.cpp tst_list_state.h
    LIBRARIES tideloft_chat_fixture tideloft_eager_history LABELS gui)
