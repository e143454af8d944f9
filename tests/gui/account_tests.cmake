# The sidebar's footer with its menu, and the keys of the sidebar's lists.
foreach(unit user_menu side_footer click_keys current_row)
    tideloft_test(tst_${unit} LIBRARIES tideloft_rail_probe LABELS gui)
endforeach()
