# Its program starts itself again, as the client does.
tideloft_test(tst_restart LIBRARIES tideloft_ui tideloft_test_service)
