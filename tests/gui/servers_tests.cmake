# The servers rail, its dialogs, the profile picture and the user menu.
foreach(unit server_rail server_scroll)
    tideloft_test(tst_${unit} LIBRARIES tideloft_gui_probe LABELS gui)
endforeach()
