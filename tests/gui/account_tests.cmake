# The sidebar's footer with its menu.
foreach(unit user_menu side_footer)
    tideloft_test(tst_${unit} LIBRARIES tideloft_rail_probe LABELS gui)
endforeach()
