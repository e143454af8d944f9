# The headers that many tests begin with: a set for each choice of the toolkit's parts that a room may use.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT

# The folders of a test are not asked for, and as macros they would make the headers others in every folder.
set_property(TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)

set(core_headers <QTest> <QSignalSpy> <algorithm> <functional> <memory> <optional>)
set(network_headers <QNetworkAccessManager> <QNetworkReply> <QTcpServer> <QTcpSocket>)
set(widgets_headers <QApplication> <QBoxLayout> <QCheckBox> <QComboBox> <QDialog> <QFileDialog> <QLabel> <QLineEdit>
    <QListWidget> <QMenu> <QMessageBox> <QPushButton> <QScrollArea> <QScrollBar> <QStackedWidget>)
tideloft_header_set(tideloft_core_test_headers LIBRARIES Qt6::Test HEADERS ${core_headers})
tideloft_header_set(tideloft_network_test_headers
    LIBRARIES Qt6::Test Qt6::Network HEADERS ${core_headers} ${network_headers})
tideloft_header_set(tideloft_widgets_test_headers
    LIBRARIES Qt6::Test Qt6::Widgets HEADERS ${core_headers} ${widgets_headers})
tideloft_header_set(tideloft_window_test_headers
    LIBRARIES Qt6::Test Qt6::Network Qt6::Widgets HEADERS ${core_headers} ${network_headers} ${widgets_headers})

# The test framework's headers ask which of these parts there are.
function(tideloft_precompile_test name)
    get_target_property(libraries ${name} LINK_LIBRARIES)
    tideloft_toolkit_of(parts ${libraries})
    list(FILTER parts INCLUDE REGEX "Test|Network|Widgets")
    list(SORT parts)
    if(parts STREQUAL "Qt6::Network;Qt6::Test;Qt6::Widgets")
        target_precompile_headers(${name} REUSE_FROM tideloft_window_test_headers)
    elseif(parts STREQUAL "Qt6::Test;Qt6::Widgets")
        target_precompile_headers(${name} REUSE_FROM tideloft_widgets_test_headers)
    elseif(parts STREQUAL "Qt6::Network;Qt6::Test")
        target_precompile_headers(${name} REUSE_FROM tideloft_network_test_headers)
    elseif(parts STREQUAL "Qt6::Test")
        target_precompile_headers(${name} REUSE_FROM tideloft_core_test_headers)
    elseif(NOT "Qt6::Test" IN_LIST parts)
        tideloft_precompile_room(${name}) # what tests are helped by, and the programs that they start
    endif()
endfunction()
