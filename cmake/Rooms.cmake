# How every room of the project is compiled: one set of warnings, includes written from the root.
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
add_library(tideloft_options INTERFACE)
target_include_directories(tideloft_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_definitions(tideloft_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
target_compile_options(tideloft_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# With CMAKE_UNITY_BUILD one source includes others. GCC takes an included source for a header, and warns of a class
# there that has members of a type from an unnamed namespace.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tideloft_options INTERFACE -Wno-subobject-linkage)
endif()
if(TIDELOFT_SANITIZE STREQUAL "thread")
    target_compile_options(tideloft_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
    target_link_options(tideloft_options INTERFACE -fsanitize=thread)
    # The sanitizer does not understand fences. What Asio's keep in order is kept by its locks as well.
    target_compile_definitions(tideloft_options INTERFACE BOOST_ASIO_DISABLE_FENCED_BLOCK)
elseif(TIDELOFT_SANITIZE)
    target_compile_options(tideloft_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tideloft_options INTERFACE -fsanitize=address,undefined)
else()
    target_compile_definitions(tideloft_options INTERFACE $<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)
    target_compile_options(tideloft_options INTERFACE -fstack-protector-strong)
    target_link_options(tideloft_options INTERFACE -Wl,-z,relro,-z,now)
endif()
# Of the linkers the fastest that there is, for the many programs of tests.
include(CheckLinkerFlag)
foreach(linker lld gold)
    check_linker_flag(CXX -fuse-ld=${linker} TIDELOFT_HAS_LINKER_${linker})
    if(TIDELOFT_HAS_LINKER_${linker})
        target_link_options(tideloft_options INTERFACE $<$<CONFIG:Debug>:-fuse-ld=${linker}>)
        break()
    endif()
endforeach()
# What is shipped does not tell in which folder it was made, and is the same from every one.
target_compile_options(tideloft_options INTERFACE
    "$<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.;-ffile-prefix-map=${PROJECT_BINARY_DIR}=build>")
# Compiling as position-independent code is what Qt asks for, and lets the loader place the program anywhere.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# What many sources of a room include: of rooms that know no window, and of those that make one.
include(PrecompiledHeaders)
set(core_headers <QByteArray> <QDateTime> <QFile> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject> <QList> <QObject>
    <QString> <QStringList> <algorithm> <functional> <memory> <optional>)
tideloft_header_set(tideloft_core_headers LIBRARIES Qt6::Core HEADERS ${core_headers})
tideloft_header_set(tideloft_widgets_headers LIBRARIES Qt6::Widgets HEADERS ${core_headers}
    <QBoxLayout> <QCheckBox> <QComboBox> <QFrame> <QKeyEvent> <QLabel> <QLineEdit> <QListWidget> <QPainter>
    <QPlainTextEdit> <QPointer> <QPushButton> <QScrollArea> <QScrollBar> <QStackedWidget> <QTextDocument> <QTimer>)

function(tideloft_precompile_room name)
    get_target_property(libraries ${name} LINK_LIBRARIES)
    tideloft_toolkit_of(parts ${libraries})
    get_target_property(type ${name} TYPE)
    if(type STREQUAL "EXECUTABLE")
        # Headers that are compiled once fit one kind of code. Older versions of the toolkit ask for this one, newer
        # ones leave programs theirs.
        target_compile_options(${name} PRIVATE -fPIC)
    endif()
    if("Qt6::Widgets" IN_LIST parts)
        target_precompile_headers(${name} REUSE_FROM tideloft_widgets_headers)
    elseif(parts)
        target_precompile_headers(${name} REUSE_FROM tideloft_core_headers)
    endif()
endfunction()

# Adds a room of the program as a static library: tideloft_room(NAME SOURCES... ).
function(tideloft_room name)
    add_library(${name} STATIC ${ARGN})
    target_link_libraries(${name} PUBLIC tideloft_options)
    tideloft_when_linked(tideloft_precompile_room ${name})
endfunction()

# Tells the sources, which lie in this folder, the version of the project: as TIDELOFT_VERSION.
function(tideloft_tell_version)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_DEFINITIONS "TIDELOFT_VERSION=\"${PROJECT_VERSION}\"")
endfunction()
